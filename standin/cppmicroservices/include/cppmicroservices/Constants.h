#pragma once

#include <string>

/// Names of headers and of service properties.
namespace cppmicroservices::Constants {

inline const std::string BUNDLE_SYMBOLICNAME = "bundle.symbolic_name";
inline const std::string BUNDLE_VERSION = "bundle.version";
inline const std::string BUNDLE_ACTIVATOR = "bundle.activator";

inline const std::string OBJECTCLASS = "objectclass";
inline const std::string SERVICE_ID = "service.id";
inline const std::string SERVICE_RANKING = "service.ranking";
inline const std::string SERVICE_SCOPE = "service.scope";
inline const std::string SCOPE_SINGLETON = "singleton";

}  // namespace cppmicroservices::Constants
