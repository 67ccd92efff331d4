#pragma once

#include <aws/core/Aws.h>
#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/s3/S3Client.h>
#include <aws/s3/S3ClientConfiguration.h>
#include <aws/s3/S3EndpointProvider.h>

#include <memory>

#include "Target.hpp"

namespace bench {

/// The SDK, started and shut down. One at a time.
class SdkLifetime {
public:
    SdkLifetime() { Aws::InitAPI(options_); }
    ~SdkLifetime() { Aws::ShutdownAPI(options_); }
    SdkLifetime(const SdkLifetime&) = delete;
    SdkLifetime& operator=(const SdkLifetime&) = delete;

private:
    Aws::SDKOptions options_;
};

inline std::shared_ptr<Aws::S3::S3Client> makeSdkClient(const Target& target) {
    Aws::Client::ClientConfiguration base;
    base.region = target.region;
    base.endpointOverride = target.endpoint;
    if (!target.caFile.empty()) base.caFile = target.caFile;
    const Aws::S3::S3ClientConfiguration configuration(
        base, Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy::Never, false,
        Aws::S3::US_EAST_1_REGIONAL_ENDPOINT_OPTION::NOT_SET);
    return std::make_shared<Aws::S3::S3Client>(
        std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>(target.accessKey, target.secretKey),
        std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>(), configuration);
}

}  // namespace bench
