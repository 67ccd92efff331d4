#pragma once

#include <aws/core/auth/signer/AWSAuthV4Signer.h>
#include <aws/core/client/ClientConfiguration.h>

namespace Aws::S3 {

/// Whether "us-east-1" means that region's own endpoint or the global one.
enum class US_EAST_1_REGIONAL_ENDPOINT_OPTION { NOT_SET, LEGACY, REGIONAL };

/// A client's configuration and S3's own settings.
struct S3ClientConfiguration : public Aws::Client::ClientConfiguration {
    using PayloadSigningPolicy = Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy;

    S3ClientConfiguration() = default;
    /// `signingPolicy` is kept for the asking: bodies sent over TLS are never part of what is signed.
    S3ClientConfiguration(  // NOLINT(google-explicit-constructor)
        const Aws::Client::ClientConfiguration& configuration,
        PayloadSigningPolicy signingPolicy = PayloadSigningPolicy::Never, bool virtualAddressing = true,
        US_EAST_1_REGIONAL_ENDPOINT_OPTION usEast1Option = US_EAST_1_REGIONAL_ENDPOINT_OPTION::NOT_SET)
        : ClientConfiguration(configuration),
          useVirtualAddressing(virtualAddressing),
          useUSEast1RegionalEndPointOption(usEast1Option),
          payloadSigningPolicy(signingPolicy) {}

    bool useVirtualAddressing = true;  ///< bucket in the host name where the name allows it
    /// NOT_SET goes to the region's own endpoint.
    US_EAST_1_REGIONAL_ENDPOINT_OPTION useUSEast1RegionalEndPointOption =
        US_EAST_1_REGIONAL_ENDPOINT_OPTION::NOT_SET;
    PayloadSigningPolicy payloadSigningPolicy = PayloadSigningPolicy::Never;
};

}  // namespace Aws::S3
