#pragma once

#include <aws/core/client/AWSError.h>
#include <aws/core/client/CoreErrors.h>
#include <aws/core/endpoint/AWSEndpoint.h>
#include <aws/core/endpoint/EndpointParameter.h>
#include <aws/core/utils/Outcome.h>

namespace Aws::Endpoint {

using ResolveEndpointOutcome =
    Aws::Utils::Outcome<AWSEndpoint, Aws::Client::AWSError<Aws::Client::CoreErrors>>;

/// Decides where a client's requests go. A client initialises its provider when it is made and asks it for
/// every request, from any thread; a provider belongs to one client.
template <typename ClientConfigurationT, typename BuiltInParametersT, typename ClientContextParametersT>
class EndpointProviderBase {
public:
    using BuiltInParameters = BuiltInParametersT;
    using ClientContextParameters = ClientContextParametersT;

    virtual ~EndpointProviderBase() = default;

    /// Not thread-safe, as all that isn't const.
    virtual void InitBuiltInParameters(const ClientConfigurationT& configuration) = 0;
    virtual void OverrideEndpoint(const Aws::String& endpoint) = 0;
    virtual ClientContextParametersT& AccessClientContextParameters() = 0;
    virtual const ClientContextParametersT& GetClientContextParameters() const = 0;

    /// The error, ENDPOINT_RESOLUTION_FAILURE, says which parameter is at fault.
    virtual ResolveEndpointOutcome ResolveEndpoint(const EndpointParameters& parameters) const = 0;
};

}  // namespace Aws::Endpoint
