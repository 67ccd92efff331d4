#pragma once

#include "cppmicroservices/BundleContext.h"
#include "cppmicroservices/ServiceInterface.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace cppmicroservices::service::component {

/// What a component instance knows of the framework: its properties and the services it refers to. Valid
/// while the instance exists.
class ComponentContext {
public:
    ComponentContext() = default;
    ComponentContext(const ComponentContext&) = delete;
    ComponentContext& operator=(const ComponentContext&) = delete;

    virtual ~ComponentContext() noexcept;

    virtual std::unordered_map<std::string, Any> GetProperties() const = 0;

    virtual BundleContext GetBundleContext() const = 0;

    /// The service bound to the reference of that name, seen as a T. Throws ComponentException when the
    /// component has no such reference or its interface isn't T.
    template <class T>
    std::shared_ptr<T> LocateService(const std::string& reference) const {
        return std::static_pointer_cast<T>(LocateService(reference, us_service_interface_iid<T>()));
    }

protected:
    virtual std::shared_ptr<void> LocateService(const std::string& reference,
                                                const std::string& interfaceName) const = 0;
};

}  // namespace cppmicroservices::service::component
