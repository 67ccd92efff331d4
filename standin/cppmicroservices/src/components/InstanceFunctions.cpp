#include "components/InstanceFunctions.hpp"

#include "cppmicroservices/servicecomponent/ComponentException.hpp"
#include "cppmicroservices/servicecomponent/runtime/ServiceComponentRuntime.hpp"

namespace cppmicroservices::detail {

namespace {

std::string symbolOf(std::string name) {
    for (auto colons = name.find("::"); colons != std::string::npos; colons = name.find("::"))
        name.replace(colons, 2, "_");
    return name;
}

}  // namespace

InstanceFunctions::InstanceFunctions(const SharedLibrary& library, const std::string& implementationClass)
    : create_(library.function<ComponentInstance*()>("NewInstance_" + symbolOf(implementationClass))),
      destroy_(
          library.function<void(ComponentInstance*)>("DeleteInstance_" + symbolOf(implementationClass))) {}

InstanceFunctions::Instance InstanceFunctions::make() const {
    Instance instance(create_(), destroy_);
    if (!instance) throw service::component::ComponentException("the library made no instance");
    return instance;
}

}  // namespace cppmicroservices::detail

// Defined here, so that the framework and every bundle share one type.
namespace cppmicroservices::service::component {

ComponentContext::~ComponentContext() noexcept = default;

detail::ComponentInstance::~ComponentInstance() noexcept = default;

runtime::ServiceComponentRuntime::~ServiceComponentRuntime() noexcept = default;

}  // namespace cppmicroservices::service::component
