#pragma once

#include "cppmicroservices/ServiceReferenceBase.h"

#include <memory>

namespace cppmicroservices {

/// What the registrar of a service holds. The service stays registered when this goes, until Unregister() or
/// until its bundle stops.
class ServiceRegistrationBase {
public:
    ServiceRegistrationBase() = default;
    explicit ServiceRegistrationBase(std::shared_ptr<detail::RegisteredService> service);

    /// Whether it came of a registration, which may be over.
    explicit operator bool() const { return service_ != nullptr; }

    /// Throws std::logic_error when the service isn't registered any more.
    ServiceReferenceBase GetReference() const;

    /// Withdraws the service; components that refer to it are deactivated on this thread, or on another that
    /// is busy with them. Who holds the object keeps it. Throws std::logic_error when it isn't registered any
    /// more.
    void Unregister();

private:
    std::shared_ptr<detail::RegisteredService> service_;
};

}  // namespace cppmicroservices
