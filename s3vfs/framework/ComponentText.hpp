#pragma once

#include <cppmicroservices/servicecomponent/runtime/dto/ComponentConfigurationDTO.hpp>
#include <string>

namespace s3vfs {

/// Whether a component is active, and what keeps it from that when it isn't; one line, as it stands in the
/// manifest.
std::string describe(
    const cppmicroservices::service::component::runtime::dto::ComponentConfigurationDTO& component);

}  // namespace s3vfs
