#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/client/DefaultRetryStrategy.h>
#include <aws/s3/S3Client.h>
#include <aws/s3/S3EndpointProvider.h>
#include <aws/s3/model/HeadBucketRequest.h>
#include <gtest/gtest.h>

#include "support/servers/ScriptedServer.hpp"

using Aws::S3::S3Errors;
using testsupport::ScriptedServer;

namespace {

/// Of a request by a client of that region, for a bucket of that name.
S3Errors errorOf(const std::string& region, const std::string& endpointOverride, const std::string& bucket) {
    Aws::Client::ClientConfiguration configuration;
    configuration.region = region;
    configuration.endpointOverride = endpointOverride;
    configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(0);
    const Aws::S3::S3Client client(std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>("KEY", "SECRET"),
                                   std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>(),
                                   Aws::S3::S3ClientConfiguration(configuration));
    Aws::S3::Model::HeadBucketRequest request;
    request.SetBucket(bucket);
    const auto outcome = client.HeadBucket(request);
    return outcome.IsSuccess() ? S3Errors::UNKNOWN : outcome.GetError().GetErrorType();
}

TEST(HostileRegions, ReachNoHost) {
    const ScriptedServer server;
    const std::string here = server.endpoint();
    for (const std::string& region :
         {"@" + here + "#", "@" + here + "/", here + "/", here + "?", "x@" + here + "#", std::string("../x"),
          std::string("eu-west-1\r\nx-evil: 1"), std::string("eu west 1"), std::string("127.0.0.1"),
          std::string("-"), std::string(64, 'a'), std::string("eu-west-1\0", 10)}) {
        for (const std::string& endpoint : {std::string(), "http://" + here}) {
            for (const char* const bucket : {"data", "my.data", "My_Data"})
                EXPECT_EQ(errorOf(region, endpoint, bucket), S3Errors::ENDPOINT_RESOLUTION_FAILURE)
                    << region << ' ' << endpoint << ' ' << bucket;
        }
    }
    EXPECT_EQ(server.connections(), 0U);
}

}  // namespace
