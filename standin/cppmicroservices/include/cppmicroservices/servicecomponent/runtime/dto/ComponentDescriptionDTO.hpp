#pragma once

#include "cppmicroservices/Any.h"
#include "cppmicroservices/servicecomponent/runtime/dto/BundleDTO.hpp"
#include "cppmicroservices/servicecomponent/runtime/dto/ReferenceDTO.hpp"

#include <string>
#include <unordered_map>
#include <vector>

namespace cppmicroservices::service::component::runtime::dto {

/// A component as the manifest describes it.
struct ComponentDescriptionDTO {
    std::string name;
    framework::dto::BundleDTO bundle;
    std::string scope;
    std::string implementationClass;
    std::vector<std::string> serviceInterfaces;
    std::unordered_map<std::string, Any> properties;
    std::vector<ReferenceDTO> references;
};

}  // namespace cppmicroservices::service::component::runtime::dto
