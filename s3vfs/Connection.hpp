#pragma once

#include <memory>
#include <storage/cloudprovider/CloudClient.hpp>
#include <string>

namespace s3vfs {

/// Where S3 is.
struct Endpoint {
    std::string address;  ///< URL or HOST:PORT (then over HTTPS); empty: Amazon's, by the region
    std::string region;   ///< for the signature
};

/// What the options leave open, from the environment: `ZR_AWS_ENDPOINT_OVERRIDE` for the address,
/// `AWS_DEFAULT_REGION`, then `AWS_REGION`, for the region; "us-east-1" when none is set.
Endpoint completeFromEnvironment(const Endpoint& given);

/// The bucket as a cloud client. Signs with `AWS_ACCESS_KEY_ID`, `AWS_SECRET_ACCESS_KEY` and
/// `AWS_SESSION_TOKEN`; without keys nothing is signed. Sends nothing by itself. The SDK must be initialised.
std::unique_ptr<storage::cloudprovider::CloudClient> openBucket(const std::string& bucket,
                                                                const Endpoint& endpoint);

}  // namespace s3vfs
