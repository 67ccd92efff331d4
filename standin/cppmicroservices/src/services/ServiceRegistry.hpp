#pragma once

#include "cppmicroservices/LDAPFilter.h"
#include "services/RegisteredService.hpp"

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace cppmicroservices::detail {

/// Is told when a service comes or goes.
class ServiceListener {
public:
    ServiceListener() = default;
    ServiceListener(const ServiceListener&) = delete;
    ServiceListener& operator=(const ServiceListener&) = delete;

    virtual ~ServiceListener() = default;

    /// The service was registered or withdrawn just now. Called on the thread that did it, without a lock of
    /// the registry, and by several at once.
    virtual void serviceChanged(const RegisteredService& service) noexcept = 0;
};

/// The services of one framework. Any thread may call any operation.
class ServiceRegistry : public std::enable_shared_from_this<ServiceRegistry> {
public:
    using Service = std::shared_ptr<RegisteredService>;

    /// Registers a service and tells the listeners. Throws std::invalid_argument when an interface has no
    /// object, or when there is no interface.
    Service add(long bundleId, const InterfaceMapConstPtr& objects, ServiceProperties properties);

    /// Withdraws a service and tells the listeners; false when it isn't registered any more.
    bool remove(RegisteredService& service);

    /// Withdraws what a bundle registered.
    void removeAllOf(long bundleId);

    /// The services of an interface that the filter, if it is one, lets through: the highest ranking first,
    /// of equals the one registered first.
    std::vector<Service> find(const std::string& interfaceName, const LDAPFilter& filter = {}) const;

    /// Tells the listener from now on, while it exists.
    void listen(std::weak_ptr<ServiceListener> listener);

private:
    std::vector<Service> snapshot() const;
    void tell(const RegisteredService& service);

    mutable std::mutex mutex_;  // guards what follows
    long lastId_ = 0;
    std::vector<Service> services_;  // in the order of registration
    std::vector<std::weak_ptr<ServiceListener>> listeners_;
};

}  // namespace cppmicroservices::detail
