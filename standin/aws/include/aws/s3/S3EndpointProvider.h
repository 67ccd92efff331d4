#pragma once

#include <aws/core/endpoint/EndpointProviderBase.h>
#include <aws/s3/S3ClientConfiguration.h>

namespace Aws::S3::Endpoint {

/// The client's settings that bear on its endpoints.
struct S3BuiltInParameters {
    Aws::String region;
    Aws::String endpoint;  ///< with its scheme; empty: S3's own endpoints
    bool useFips = false;
    bool useDualStack = false;
    bool useGlobalEndpoint = false;  ///< "us-east-1" is served at the global endpoint
};

/// S3's own settings that bear on its endpoints.
struct S3ClientContextParameters {
    bool forcePathStyle = false;
};

using S3EndpointProviderBase = Aws::Endpoint::EndpointProviderBase<S3ClientConfiguration, S3BuiltInParameters,
                                                                   S3ClientContextParameters>;

/// S3's public endpoint rules: the bucket in the host name where it is a DNS label, in the path where not;
/// the partition's domain by the region; or the override.
class S3EndpointProvider : public S3EndpointProviderBase {
public:
    void InitBuiltInParameters(const S3ClientConfiguration& configuration) override;
    /// Without "http://" or "https://" it is reached over TLS.
    void OverrideEndpoint(const Aws::String& endpoint) override;
    S3ClientContextParameters& AccessClientContextParameters() override { return contextParameters_; }
    const S3ClientContextParameters& GetClientContextParameters() const override {
        return contextParameters_;
    }

    /// Looks for the parameter "Bucket"; without it the answer is the service's own endpoint.
    Aws::Endpoint::ResolveEndpointOutcome ResolveEndpoint(
        const Aws::Endpoint::EndpointParameters& parameters) const override;

private:
    S3BuiltInParameters builtInParameters_;
    S3ClientContextParameters contextParameters_;
};

}  // namespace Aws::S3::Endpoint
