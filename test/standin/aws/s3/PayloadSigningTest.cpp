#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/client/DefaultRetryStrategy.h>
#include <aws/s3/S3Client.h>
#include <aws/s3/S3EndpointProvider.h>
#include <aws/s3/model/HeadBucketRequest.h>
#include <aws/s3/model/PutObjectRequest.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "support/servers/ScriptedServer.hpp"

using ::testing::ElementsAre;
using testsupport::httpReply;
using testsupport::ScriptedServer;
using testsupport::Step;
using Policy = Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy;

namespace {

constexpr auto unsignedPayload = "UNSIGNED-PAYLOAD";
constexpr auto hashOfContent = "ed7002b439e9ac845f22357d822bac1444730fbdb6016d3ec9432297b9ec9f73";
constexpr auto hashOfNothing = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";

/// What the server is told of a request's payload: one with "content", and one without.
class PayloadSigning : public ::testing::Test {
protected:
    std::vector<std::string> hashesBy(Policy policy, bool tls) {
        ScriptedServer server({{Step::send(httpReply(200))}, {Step::send(httpReply(200))}},
                              {authority.issue({"127.0.0.1"}), tls});
        const auto client = clientOf((tls ? "https://" : "http://") + server.endpoint(), policy);

        Aws::S3::Model::PutObjectRequest put;
        put.SetBucket("b");
        put.SetKey("k");
        put.SetBody(std::make_shared<std::stringstream>("content"));
        EXPECT_TRUE(client.PutObject(put).IsSuccess());
        Aws::S3::Model::HeadBucketRequest head;
        head.SetBucket("b");
        EXPECT_TRUE(client.HeadBucket(head).IsSuccess());

        std::vector<std::string> hashes;
        for (const auto& request : server.requests())
            hashes.push_back(request.header("x-amz-content-sha256"));
        return hashes;
    }

private:
    Aws::S3::S3Client clientOf(const std::string& endpoint, Policy policy) const {
        Aws::Client::ClientConfiguration configuration;
        configuration.region = "eu-west-3";
        configuration.endpointOverride = endpoint;
        configuration.caFile = authority.caFile();
        configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(0);
        return Aws::S3::S3Client(std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>("KEY", "SECRET"),
                                 std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>(),
                                 Aws::S3::S3ClientConfiguration(configuration, policy));
    }

    testsupport::TestAuthority authority;
};

TEST_F(PayloadSigning, CoversBodiesOverTlsUnlessThePolicyIsNever) {
    EXPECT_THAT(hashesBy(Policy::Always, true), ElementsAre(hashOfContent, hashOfNothing));
    EXPECT_THAT(hashesBy(Policy::RequestDependent, true), ElementsAre(hashOfContent, hashOfNothing));
    EXPECT_THAT(hashesBy(Policy::Never, true), ElementsAre(unsignedPayload, unsignedPayload));
}

TEST_F(PayloadSigning, CoversBodiesWithoutTlsWhateverThePolicy) {
    for (const Policy policy : {Policy::Always, Policy::RequestDependent, Policy::Never})
        EXPECT_THAT(hashesBy(policy, false), ElementsAre(hashOfContent, hashOfNothing));
}

}  // namespace
