#pragma once

#include <string>
#include <variant>

#include "s3/Url.hpp"

namespace standin::aws::s3 {

/// What decides about a request's endpoint.
struct EndpointInput {
    std::string region;
    std::string endpointOverride;  ///< with its scheme; empty: S3's own endpoints
    std::string bucket;            ///< empty: the service itself
    bool forcePathStyle = false;
    bool useFips = false;
    bool useDualStack = false;
    bool useGlobalEndpoint = false;  ///< "us-east-1" is served at the global endpoint
};

struct ResolvedEndpoint {
    Url url;  ///< keys lie below its path
    std::string signingRegion;
};

/// The message says which input is at fault.
struct EndpointFailure {
    std::string message;
};

/// The endpoint rules S3 publishes ("Amazon S3 endpoints and quotas", "Virtual hosting of buckets"), save
/// access points, accelerated transfer, Outposts and directory buckets. No region gets into a host name
/// that isn't a DNS label.
std::variant<ResolvedEndpoint, EndpointFailure> resolveEndpoint(EndpointInput input);

/// Whether a bucket may stand in front of the endpoint's host name: 3 to 63 lower-case letters, digits and
/// hyphens; with `allowDots` several such labels, but no IPv4 address.
bool isVirtualHostable(std::string_view bucket, bool allowDots);

}  // namespace standin::aws::s3
