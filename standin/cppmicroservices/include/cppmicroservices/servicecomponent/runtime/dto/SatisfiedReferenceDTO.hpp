#pragma once

#include "cppmicroservices/servicecomponent/runtime/dto/ServiceReferenceDTO.hpp"

#include <string>
#include <vector>

namespace cppmicroservices::service::component::runtime::dto {

struct SatisfiedReferenceDTO {
    std::string name;
    std::string target;
    std::vector<framework::dto::ServiceReferenceDTO> boundServices;
};

}  // namespace cppmicroservices::service::component::runtime::dto
