#pragma once

#include <string>

/// Names of a component's properties.
namespace cppmicroservices::service::component::ComponentConstants {

inline const std::string COMPONENT_NAME = "component.name";
inline const std::string COMPONENT_ID = "component.id";

}  // namespace cppmicroservices::service::component::ComponentConstants
