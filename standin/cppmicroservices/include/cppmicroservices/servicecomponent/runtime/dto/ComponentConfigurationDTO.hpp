#pragma once

#include "cppmicroservices/servicecomponent/runtime/dto/ComponentDescriptionDTO.hpp"
#include "cppmicroservices/servicecomponent/runtime/dto/SatisfiedReferenceDTO.hpp"
#include "cppmicroservices/servicecomponent/runtime/dto/UnsatisfiedReferenceDTO.hpp"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace cppmicroservices::service::component::runtime::dto {

enum class ComponentState : std::uint8_t {
    UNSATISFIED_REFERENCE,
    SATISFIED,  // but not active: it is being activated, or failed
    ACTIVE
};

/// A component at one moment.
struct ComponentConfigurationDTO {
    ComponentDescriptionDTO description;
    ComponentState state = ComponentState::UNSATISFIED_REFERENCE;
    unsigned long id = 0;  // "component.id"
    std::unordered_map<std::string, Any> properties;
    std::vector<SatisfiedReferenceDTO> satisfiedReferences;
    std::vector<UnsatisfiedReferenceDTO> unsatisfiedReferences;
};

}  // namespace cppmicroservices::service::component::runtime::dto
