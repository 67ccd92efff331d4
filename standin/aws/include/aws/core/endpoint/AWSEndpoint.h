#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>

#include <optional>
#include <utility>

namespace Aws::Internal::Endpoint {

/// How requests to an endpoint are signed.
class EndpointAuthScheme {
public:
    /// "SignatureV4", AWS Signature Version 4.
    const Aws::String& GetName() const { return name_; }
    void SetName(Aws::String name) { name_ = std::move(name); }

    const std::optional<Aws::String>& GetSigningName() const { return signingName_; }
    void SetSigningName(Aws::String signingName) { signingName_ = std::move(signingName); }

    const std::optional<Aws::String>& GetSigningRegion() const { return signingRegion_; }
    void SetSigningRegion(Aws::String signingRegion) { signingRegion_ = std::move(signingRegion); }

private:
    Aws::String name_;
    std::optional<Aws::String> signingName_;
    std::optional<Aws::String> signingRegion_;
};

struct EndpointAttributes {
    EndpointAuthScheme authScheme;
};

}  // namespace Aws::Internal::Endpoint

namespace Aws::Endpoint {

/// Where a request goes.
class AWSEndpoint {
public:
    using EndpointAttributes = Aws::Internal::Endpoint::EndpointAttributes;

    /// Scheme, host, port where it isn't the scheme's own, and the path below which keys lie, percent-encoded
    /// and without a slash at its end.
    const Aws::String& GetURL() const { return url_; }
    void SetURL(Aws::String url) { url_ = std::move(url); }

    /// Adds a slash and the segments, percent-encoded, to the URL's path. Every byte keeps its place: empty
    /// and dot segments too.
    void AddPathSegments(const Aws::String& segments);

    const std::optional<EndpointAttributes>& GetAttributes() const { return attributes_; }
    void SetAttributes(EndpointAttributes attributes) { attributes_ = std::move(attributes); }

private:
    Aws::String url_;
    std::optional<EndpointAttributes> attributes_;
};

}  // namespace Aws::Endpoint
