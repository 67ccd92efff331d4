#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <storage/cloudprovider/CloudClient.hpp>
#include <string>
#include <vector>

#include "conformance/targets/Target.hpp"
#include "support/plugin/CloudFailure.hpp"

/// The suite that every S3 server has to pass; a program instantiates it for its targets. A test may find
/// nothing of another test's in its bucket, and tests run in any order.
class CloudClientConformance : public ::testing::TestWithParam<testsupport::TargetChoice> {
protected:
    static constexpr std::uint64_t partSize = std::uint64_t{5} * 1024 * 1024;

    void put(const std::string& key, const std::string& content);
    std::string get(const std::string& key, std::uint64_t start = 0, std::uint64_t end = 0);
    /// Expects that much content; a failure tells where it differs instead of printing all of it.
    void expectContent(const std::string& key, const std::string& content);
    /// Of all pages.
    std::vector<std::string> names(const std::string& prefix,
                                   const storage::cloudprovider::ListOptions& options);
    /// Uploads it as that part.
    storage::cloudprovider::PartInfo part(const std::string& key, const std::string& id, std::uint64_t index,
                                          const std::string& content);

    bool serverHas(testsupport::Quirk quirk) const { return target->quirks().count(quirk) > 0; }
    /// Expects the failure of an action that the server refuses without a reason that means something.
    template <class Action>
    void expectUnexplainedFailure(Action&& action) {
        using namespace storage::cloudprovider;
        if (serverHas(testsupport::Quirk::LeavesLocationsEmpty)) {
            testsupport::expectFailure<InvalidLocationException>(u"bad_region", action);
        } else {
            testsupport::expectFailure<UnknownErrorException>(testsupport::noIdentifier, action);
        }
    }

    std::unique_ptr<testsupport::Target> target = GetParam().open();
    std::unique_ptr<storage::cloudprovider::CloudClient> client = target->client();
};
