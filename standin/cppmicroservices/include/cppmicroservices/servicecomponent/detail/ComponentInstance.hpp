#pragma once

#include "cppmicroservices/ServiceInterface.h"
#include "cppmicroservices/servicecomponent/ComponentContext.hpp"

#include <memory>

namespace cppmicroservices::service::component::detail {

/// One instance of a component, as the runtime drives it: created, activated, deactivated, destroyed; from
/// one thread at a time.
class ComponentInstance {
public:
    ComponentInstance() = default;
    ComponentInstance(const ComponentInstance&) = delete;
    ComponentInstance& operator=(const ComponentInstance&) = delete;

    virtual ~ComponentInstance() noexcept;

    /// Makes the component's object out of the services that the context locates. Throws what the object's
    /// constructor throws.
    virtual void CreateInstance(const std::shared_ptr<ComponentContext>& context) = 0;

    virtual void Activate() = 0;
    virtual void Deactivate() = 0;

    /// The object seen as each interface that the component provides.
    virtual InterfaceMapPtr GetInterfaceMap() = 0;
};

}  // namespace cppmicroservices::service::component::detail
