#pragma once

#include "cppmicroservices/Any.h"

#include <string>
#include <unordered_map>

namespace cppmicroservices::framework::dto {

struct ServiceReferenceDTO {
    unsigned long id = 0;      // "service.id"
    unsigned long bundle = 0;  // that registered it, 0 for the framework
    std::unordered_map<std::string, Any> properties;
};

}  // namespace cppmicroservices::framework::dto
