#pragma once

#include "bundle/SharedLibrary.hpp"
#include "cppmicroservices/servicecomponent/detail/ComponentInstance.hpp"

#include <memory>
#include <string>

namespace cppmicroservices::detail {

using service::component::detail::ComponentInstance;

/// The two functions through which a library makes and destroys the instances of a class:
/// "NewInstance_" and "DeleteInstance_", then the class with "::" replaced by "_".
class InstanceFunctions {
public:
    using Instance = std::unique_ptr<ComponentInstance, void (*)(ComponentInstance*)>;

    /// Throws std::runtime_error when the library lacks one.
    InstanceFunctions(const SharedLibrary& library, const std::string& implementationClass);

    /// Throws ComponentException when the library makes none.
    Instance make() const;

private:
    ComponentInstance* (*create_)();
    void (*destroy_)(ComponentInstance*);
};

}  // namespace cppmicroservices::detail
