#include <aws/s3/S3EndpointProvider.h>

#include <algorithm>

#include "core/PercentEncoding.hpp"
#include "s3/EndpointRules.hpp"

void Aws::Endpoint::AWSEndpoint::AddPathSegments(const Aws::String& segments) {
    url_.erase(url_.find_last_not_of('/') + 1);
    url_ += "/" + standin::aws::encodeWirePath(segments);
}

namespace Aws::S3::Endpoint {

using namespace standin::aws::s3;

namespace {

// An endpoint of one's own may need no region, but a signature has to name one.
constexpr char placeholderRegion[] = "region-not-set";

std::string valueOf(const Aws::Endpoint::EndpointParameters& parameters, const char* name) {
    const auto found = std::find_if(parameters.begin(), parameters.end(),
                                    [&](const auto& parameter) { return parameter.GetName() == name; });
    return found == parameters.end() ? std::string() : found->GetStringValueNoCheck();
}

std::string withScheme(const std::string& endpoint, Aws::Http::Scheme scheme) {
    if (endpoint.empty() || hasHttpScheme(endpoint)) return endpoint;
    return std::string(Aws::Http::SchemeMapper::ToString(scheme)) + "://" + endpoint;
}

Aws::Endpoint::AWSEndpoint toAwsEndpoint(const ResolvedEndpoint& resolved) {
    Aws::Internal::Endpoint::EndpointAttributes attributes;
    attributes.authScheme.SetName("SignatureV4");
    attributes.authScheme.SetSigningName("s3");
    attributes.authScheme.SetSigningRegion(resolved.signingRegion);
    Aws::Endpoint::AWSEndpoint endpoint;
    endpoint.SetURL(toString(resolved.url));
    endpoint.SetAttributes(std::move(attributes));
    return endpoint;
}

}  // namespace

void S3EndpointProvider::InitBuiltInParameters(const S3ClientConfiguration& configuration) {
    builtInParameters_.region = configuration.region;
    builtInParameters_.endpoint = withScheme(configuration.endpointOverride, configuration.scheme);
    builtInParameters_.useFips = configuration.useFIPS;
    builtInParameters_.useDualStack = configuration.useDualStack;
    builtInParameters_.useGlobalEndpoint =
        configuration.useUSEast1RegionalEndPointOption == US_EAST_1_REGIONAL_ENDPOINT_OPTION::LEGACY;
    contextParameters_.forcePathStyle = !configuration.useVirtualAddressing;
}

void S3EndpointProvider::OverrideEndpoint(const Aws::String& endpoint) {
    builtInParameters_.endpoint = withScheme(endpoint, Aws::Http::Scheme::HTTPS);
}

Aws::Endpoint::ResolveEndpointOutcome S3EndpointProvider::ResolveEndpoint(
    const Aws::Endpoint::EndpointParameters& parameters) const {
    EndpointInput input;
    input.region = builtInParameters_.region;
    input.endpointOverride = builtInParameters_.endpoint;
    input.bucket = valueOf(parameters, "Bucket");
    input.forcePathStyle = contextParameters_.forcePathStyle;
    input.useFips = builtInParameters_.useFips;
    input.useDualStack = builtInParameters_.useDualStack;
    input.useGlobalEndpoint = builtInParameters_.useGlobalEndpoint;
    if (input.region.empty() && !input.endpointOverride.empty()) input.region = placeholderRegion;

    const auto resolved = resolveEndpoint(std::move(input));
    if (const auto* failure = std::get_if<EndpointFailure>(&resolved)) {
        return Aws::Client::AWSError<Aws::Client::CoreErrors>(
            Aws::Client::CoreErrors::ENDPOINT_RESOLUTION_FAILURE, "CoreErrors::ENDPOINT_RESOLUTION_FAILURE",
            failure->message, false);
    }
    return toAwsEndpoint(std::get<ResolvedEndpoint>(resolved));
}

}  // namespace Aws::S3::Endpoint
