#pragma once

#include <cstdint>
#include <string>

namespace cppmicroservices::framework::dto {

struct BundleDTO {
    unsigned long id = 0;
    std::uint32_t state = 0;  // a Bundle::State
    std::string symbolicName;
    std::string version;
};

}  // namespace cppmicroservices::framework::dto
