#pragma once

#include "components/BoundContext.hpp"
#include "components/InstanceFunctions.hpp"
#include "cppmicroservices/BundleContext.h"
#include "framework/FailureLog.hpp"
#include "services/ServiceRegistry.hpp"

#include <memory>

namespace cppmicroservices::detail {

/// Where a component of a started bundle belongs.
struct ComponentHome {
    unsigned long componentId;  // counts from 1 in a framework
    long bundleId;
    BundleContext bundle;
    std::shared_ptr<ServiceRegistry> registry;
    std::shared_ptr<FailureLog> log;
};

/// A component's one instance, active and registered for as long as this object lives.
class ActiveComponent {
public:
    /// Makes, activates and registers it, in this order. Throws what the component throws, and, before it is
    /// activated, ComponentException when it doesn't provide the interfaces it is described with. Refers to
    /// the description and the home.
    ActiveComponent(const ComponentDescription& description, const InstanceFunctions& functions,
                    const ComponentHome& home, std::shared_ptr<BoundContext> context);
    ActiveComponent(const ActiveComponent&) = delete;
    ActiveComponent& operator=(const ActiveComponent&) = delete;

    /// Withdraws, deactivates and deletes it; a failure to deactivate goes to the log.
    ~ActiveComponent();

    const BoundContext& context() const { return *context_; }

private:
    const ComponentDescription& description_;
    const ComponentHome& home_;
    const std::shared_ptr<BoundContext> context_;
    InstanceFunctions::Instance instance_;
    ServiceRegistry::Service service_;  // null when the component provides none
};

}  // namespace cppmicroservices::detail
