#include "components/ActiveComponent.hpp"

#include "cppmicroservices/servicecomponent/ComponentException.hpp"

#include <utility>

namespace cppmicroservices::detail {

namespace {

InstanceFunctions::Instance activated(const InstanceFunctions& functions,
                                      const std::shared_ptr<BoundContext>& context) {
    InstanceFunctions::Instance instance = functions.make();
    instance->CreateInstance(context);
    instance->Activate();
    return instance;
}

InterfaceMapPtr providedBy(ComponentInstance& instance, const std::vector<std::string>& interfaces) {
    auto provided = instance.GetInterfaceMap();
    for (const std::string& name : interfaces)
        if (!provided || !provided->count(name))
            throw service::component::ComponentException("it doesn't provide " + name);
    return provided;
}

}  // namespace

ActiveComponent::ActiveComponent(const ComponentDescription& description, const InstanceFunctions& functions,
                                 long bundleId, std::shared_ptr<BoundContext> context,
                                 ServiceRegistry& registry)
    : context_(std::move(context)), instance_(activated(functions, context_)), registry_(registry) {
    if (description.interfaces.empty()) return;
    service_ =
        registry_.add(bundleId, providedBy(*instance_, description.interfaces), context_->GetProperties());
}

ActiveComponent::~ActiveComponent() {
    if (service_) registry_.remove(*service_);
    try {
        instance_->Deactivate();
    } catch (...) {
        // It is deleted all the same.
    }
}

}  // namespace cppmicroservices::detail
