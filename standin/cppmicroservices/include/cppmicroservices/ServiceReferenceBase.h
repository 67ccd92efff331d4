#pragma once

#include "cppmicroservices/Any.h"

#include <memory>
#include <string>

namespace cppmicroservices {

namespace detail {
class RegisteredService;
}

/// Names a service, without keeping it registered. Any thread may use a copy of its own.
class ServiceReferenceBase {
public:
    ServiceReferenceBase() = default;
    explicit ServiceReferenceBase(std::shared_ptr<detail::RegisteredService> service);

    /// Whether it names a service that is registered at this moment.
    explicit operator bool() const;

    /// The property of that name, whatever the case of its letters; an empty value when there is none.
    Any GetProperty(const std::string& name) const;

    /// Whether the service was registered under this interface.
    bool IsConvertibleTo(const std::string& interfaceName) const;

    bool operator==(const ServiceReferenceBase& other) const { return service_ == other.service_; }

private:
    friend class BundleContext;

    std::shared_ptr<detail::RegisteredService> service_;
};

}  // namespace cppmicroservices
