#include "cppmicroservices/servicecomponent/detail/ComponentInstance.hpp"

#include "cppmicroservices/servicecomponent/runtime/ServiceComponentRuntime.hpp"

// Defined here, so that the framework and every bundle share one type.
namespace cppmicroservices::service::component {

ComponentContext::~ComponentContext() noexcept = default;

detail::ComponentInstance::~ComponentInstance() noexcept = default;

runtime::ServiceComponentRuntime::~ServiceComponentRuntime() noexcept = default;

}  // namespace cppmicroservices::service::component
