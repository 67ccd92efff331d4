#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "S3CloudClient.hpp"
#include "support/plugin/CloudFailure.hpp"
#include "support/plugin/LogCapture.hpp"
#include "support/plugin/MockS3Client.hpp"

namespace testsupport {

constexpr unsigned allLevels = LogCapture::allLevels;

inline Aws::S3::S3Error s3Error(Aws::S3::S3Errors type, const std::string& name = "",
                                const std::string& message = "",
                                Aws::Http::HttpResponseCode code = Aws::Http::HttpResponseCode::BAD_REQUEST) {
    Aws::Client::AWSError<Aws::S3::S3Errors> error(type, name, message, false);
    error.SetResponseCode(code);
    return error;
}

/// A result wrapped as the SDK does it, so that an action can return the outcome of one.
inline Aws::S3::Model::GetBucketLocationOutcome locatedIn(const std::string& region) {
    Aws::S3::Model::GetBucketLocationResult result;
    result.SetLocationConstraint(
        Aws::S3::Model::BucketLocationConstraintMapper::GetBucketLocationConstraintForName(region));
    return result;
}

using LevelAndText = std::pair<int, std::string>;

inline std::vector<LevelAndText> levelsAndTexts(const LogCapture& log) {
    std::vector<LevelAndText> all;
    for (const auto& record : log.records())
        all.emplace_back(record.level, record.text);
    return all;
}

/// A client of bucket "b" in region eu-west-3 over an SDK client that fails on any request not expected.
class CloudClientTest : public ::testing::Test {
protected:
    using S3Errors = Aws::S3::S3Errors;

    std::unique_ptr<storage::s3provider::S3CloudClient> clientWith(
        storage::s3provider::S3ClientConfiguration settings, const std::string& region = "eu-west-3") {
        return std::make_unique<storage::s3provider::S3CloudClient>("b", s3, settings, region);
    }

    std::shared_ptr<::testing::StrictMock<MockS3Client>> s3 =
        std::make_shared<::testing::StrictMock<MockS3Client>>();
    std::unique_ptr<storage::s3provider::S3CloudClient> client = clientWith({5, 0});
};

}  // namespace testsupport
