#pragma once

#include <aws/core/auth/signer/AWSAuthV4Signer.h>
#include <aws/core/client/ClientConfiguration.h>

namespace Aws::S3 {

/// Whether "us-east-1" means that region's own endpoint or the global one.
enum class US_EAST_1_REGIONAL_ENDPOINT_OPTION { NOT_SET, LEGACY, REGIONAL };

/// A client's configuration and S3's own settings.
struct S3ClientConfiguration : public Aws::Client::ClientConfiguration {
    using PayloadSigningPolicy = Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy;

    S3ClientConfiguration()
        : S3ClientConfiguration(Aws::Client::ClientConfiguration(), PayloadSigningPolicy::RequestDependent) {}
    /// `signingPolicy` says whether bodies sent over TLS are part of what is signed. NOT_SET leaves the
    /// choice to AWS_S3_US_EAST_1_REGIONAL_ENDPOINT or the profile's `s3_us_east_1_regional_endpoint`,
    /// "legacy" or "regional"; without them it is REGIONAL.
    S3ClientConfiguration(  // NOLINT(google-explicit-constructor)
        const Aws::Client::ClientConfiguration& configuration,
        PayloadSigningPolicy signingPolicy = PayloadSigningPolicy::Never, bool virtualAddressing = true,
        US_EAST_1_REGIONAL_ENDPOINT_OPTION usEast1Option = US_EAST_1_REGIONAL_ENDPOINT_OPTION::NOT_SET);

    bool useVirtualAddressing;  ///< bucket in the host name where the name allows it
    US_EAST_1_REGIONAL_ENDPOINT_OPTION useUSEast1RegionalEndPointOption;
    PayloadSigningPolicy payloadSigningPolicy;
};

}  // namespace Aws::S3
