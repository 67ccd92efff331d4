#pragma once

#include "cppmicroservices/ServiceInterface.h"
#include "cppmicroservices/ServiceProperties.h"

#include <memory>
#include <mutex>
#include <string>

namespace cppmicroservices::detail {

class ServiceRegistry;

/// A service, from its registration on. Any thread may call any operation.
class RegisteredService {
public:
    RegisteredService(std::weak_ptr<ServiceRegistry> registry, long id, long bundleId,
                      InterfaceMapConstPtr objects, ServiceProperties properties);

    /// Counts from 1, in the order of registration.
    long id() const { return id_; }

    /// The bundle that registered it, 0 for the framework.
    long bundleId() const { return bundleId_; }

    /// "service.ranking"; 0 when it has none that is an int.
    int ranking() const { return ranking_; }

    const ServiceProperties& properties() const { return properties_; }

    /// The property of that name, whatever the case of its letters; empty when there is none.
    Any property(const std::string& name) const;

    /// Whether it was registered under that interface.
    bool provides(const std::string& interfaceName) const;

    /// The object seen as that interface; null when it isn't registered under it, or not any more.
    std::shared_ptr<void> object(const std::string& interfaceName) const;

    bool isRegistered() const;

    /// Takes it out of the registry. Throws std::logic_error when it isn't there any more.
    void withdraw();

    /// Lets the object go: it isn't registered any more. Gives null to all callers but the first. For the
    /// registry only.
    InterfaceMapConstPtr release();

private:
    const std::weak_ptr<ServiceRegistry> registry_;
    const long id_;
    const long bundleId_;
    const ServiceProperties properties_;
    const int ranking_;

    mutable std::mutex mutex_;
    InterfaceMapConstPtr objects_;  // guarded; null when it isn't registered any more
};

}  // namespace cppmicroservices::detail
