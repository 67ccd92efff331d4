#include "components/BoundContext.hpp"

#include "cppmicroservices/servicecomponent/ComponentException.hpp"

#include <algorithm>
#include <utility>

namespace cppmicroservices::detail {

using service::component::ComponentException;

BoundContext::BoundContext(const ComponentDescription& description, ServiceProperties properties,
                           BundleContext bundle, std::vector<BoundService> services)
    : references_(description.references),
      properties_(std::move(properties)),
      bundle_(std::move(bundle)),
      services_(std::move(services)) {}

bool BoundContext::isBound() const {
    return std::all_of(services_.begin(), services_.end(),
                       [](const BoundService& bound) { return bound.service->isRegistered(); });
}

std::shared_ptr<void> BoundContext::LocateService(const std::string& reference,
                                                  const std::string& interfaceName) const {
    const auto found = std::find_if(references_.begin(), references_.end(),
                                    [&reference](const auto& each) { return each.name == reference; });
    if (found == references_.end()) throw ComponentException("there is no reference '" + reference + "'");
    if (found->interfaceName != interfaceName)
        throw ComponentException("the reference '" + reference + "' is to " + found->interfaceName +
                                 ", not to " + interfaceName);
    return services_[static_cast<std::size_t>(found - references_.begin())].object;
}

}  // namespace cppmicroservices::detail
