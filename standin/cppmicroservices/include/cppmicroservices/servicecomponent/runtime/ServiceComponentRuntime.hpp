#pragma once

#include "cppmicroservices/Bundle.h"
#include "cppmicroservices/servicecomponent/runtime/dto/ComponentConfigurationDTO.hpp"
#include "cppmicroservices/servicecomponent/runtime/dto/ComponentDescriptionDTO.hpp"

#include <vector>

namespace cppmicroservices::service::component::runtime {

/// Tells of the components of active bundles. A service of every started framework; any thread.
class ServiceComponentRuntime {
public:
    ServiceComponentRuntime() = default;
    ServiceComponentRuntime(const ServiceComponentRuntime&) = delete;
    ServiceComponentRuntime& operator=(const ServiceComponentRuntime&) = delete;

    virtual ~ServiceComponentRuntime() noexcept;

    /// The components of these bundles, of all when none are given.
    virtual std::vector<dto::ComponentDescriptionDTO> GetComponentDescriptionDTOs(
        const std::vector<Bundle>& bundles = {}) const = 0;

    /// How the component fares that was described so: one configuration, none when its bundle isn't active
    /// any more.
    virtual std::vector<dto::ComponentConfigurationDTO> GetComponentConfigurationDTOs(
        const dto::ComponentDescriptionDTO& description) const = 0;
};

}  // namespace cppmicroservices::service::component::runtime
