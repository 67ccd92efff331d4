#pragma once

#include "components/BoundContext.hpp"
#include "components/InstanceFunctions.hpp"
#include "services/ServiceRegistry.hpp"

#include <memory>

namespace cppmicroservices::detail {

/// A component's one instance, active and registered for as long as this object lives.
class ActiveComponent {
public:
    /// Makes, activates and registers it, in this order. Throws what the component throws, and
    /// ComponentException when it doesn't provide the interfaces it is described with.
    ActiveComponent(const ComponentDescription& description, const InstanceFunctions& functions,
                    long bundleId, std::shared_ptr<BoundContext> context, ServiceRegistry& registry);
    ActiveComponent(const ActiveComponent&) = delete;
    ActiveComponent& operator=(const ActiveComponent&) = delete;

    /// Withdraws, deactivates and deletes it.
    ~ActiveComponent();

    const BoundContext& context() const { return *context_; }

private:
    const std::shared_ptr<BoundContext> context_;
    InstanceFunctions::Instance instance_;
    ServiceRegistry& registry_;
    ServiceRegistry::Service service_;  // null when the component provides none
};

}  // namespace cppmicroservices::detail
