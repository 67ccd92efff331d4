#include "components/ActiveComponent.hpp"

#include "cppmicroservices/servicecomponent/ComponentException.hpp"

#include <utility>

namespace cppmicroservices::detail {

namespace {

InstanceFunctions::Instance created(const InstanceFunctions& functions,
                                    const std::shared_ptr<BoundContext>& context) {
    InstanceFunctions::Instance instance = functions.make();
    instance->CreateInstance(context);
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
                                 const ComponentHome& home, std::shared_ptr<BoundContext> context)
    : description_(description),
      home_(home),
      context_(std::move(context)),
      instance_(created(functions, context_)) {
    const auto provided = providedBy(*instance_, description_.interfaces);
    instance_->Activate();
    if (description_.interfaces.empty()) return;
    service_ = home_.registry->add(home_.bundleId, provided, context_->GetProperties());
}

ActiveComponent::~ActiveComponent() {
    if (service_) home_.registry->remove(*service_);
    try {
        instance_->Deactivate();
    } catch (...) {
        home_.log->report(description_.name, "can't be deactivated");
    }
}

}  // namespace cppmicroservices::detail
