#include "cppmicroservices/servicecomponent/detail/ComponentInstance.hpp"

// Defined here, so that the framework and every bundle share one type.
namespace cppmicroservices::service::component {

ComponentContext::~ComponentContext() noexcept = default;

detail::ComponentInstance::~ComponentInstance() noexcept = default;

}  // namespace cppmicroservices::service::component
