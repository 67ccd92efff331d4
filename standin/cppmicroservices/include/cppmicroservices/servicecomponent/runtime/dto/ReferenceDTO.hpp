#pragma once

#include <string>

namespace cppmicroservices::service::component::runtime::dto {

struct ReferenceDTO {
    std::string name;
    std::string interfaceName;
    std::string cardinality;   // "1..1"
    std::string policy;        // "static"
    std::string policyOption;  // "reluctant"
    std::string target;        // a filter, or empty
};

}  // namespace cppmicroservices::service::component::runtime::dto
