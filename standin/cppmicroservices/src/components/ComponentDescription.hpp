#pragma once

#include "cppmicroservices/LDAPFilter.h"
#include "cppmicroservices/ServiceProperties.h"

#include <nlohmann/json_fwd.hpp>

#include <string>
#include <vector>

namespace cppmicroservices::detail {

/// A service that a component can't do without, and keeps until the service goes.
struct ReferenceDescription {
    std::string name;
    std::string interfaceName;
    LDAPFilter target;  // no filter when every service of the interface will do
};

/// One component of a bundle's manifest. References go to the constructor; it is activated as soon as all of
/// them are there.
struct ComponentDescription {
    std::string name;  // the implementation class, unless the manifest gives one
    std::string implementationClass;
    std::vector<std::string> interfaces;
    ServiceProperties properties;
    std::vector<ReferenceDescription> references;
};

/// The components of a manifest, none when it has no "scr". Throws std::runtime_error, which names the place,
/// for what isn't understood, and for what Declarative Services know but this runtime doesn't: references
/// that aren't static and mandatory or aren't injected, other scopes, components that aren't enabled.
std::vector<ComponentDescription> componentsOf(const nlohmann::json& manifest);

}  // namespace cppmicroservices::detail
