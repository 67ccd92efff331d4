#pragma once

#include <string>

namespace cppmicroservices::service::component::runtime::dto {

struct UnsatisfiedReferenceDTO {
    std::string name;
    std::string target;
};

}  // namespace cppmicroservices::service::component::runtime::dto
