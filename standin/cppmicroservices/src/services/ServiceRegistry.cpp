#include "services/ServiceRegistry.hpp"

#include "cppmicroservices/ServiceReferenceBase.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace cppmicroservices::detail {

namespace {

void requireObjects(const InterfaceMapConstPtr& objects) {
    if (!objects || objects->empty()) throw std::invalid_argument("a service needs an interface");
    for (const auto& [name, object] : *objects)
        if (!object) throw std::invalid_argument("a service needs an object: there is none for " + name);
}

}  // namespace

ServiceRegistry::Service ServiceRegistry::add(long bundleId, const InterfaceMapConstPtr& objects,
                                              ServiceProperties properties) {
    requireObjects(objects);
    Service service;
    {
        const std::lock_guard lock(mutex_);
        service = std::make_shared<RegisteredService>(weak_from_this(), ++lastId_, bundleId, objects,
                                                      std::move(properties));
        services_.push_back(service);
    }
    tell(*service);
    return service;
}

bool ServiceRegistry::remove(RegisteredService& service) {
    const InterfaceMapConstPtr objects = service.release();  // outlives the lock: a destructor may come here
    if (!objects) return false;
    {
        const std::lock_guard lock(mutex_);
        const auto isIt = [&service](const Service& each) { return each.get() == &service; };
        services_.erase(std::find_if(services_.begin(), services_.end(), isIt));
    }
    tell(service);
    return true;
}

void ServiceRegistry::removeAllOf(long bundleId) {
    for (const Service& service : snapshot())
        if (service->bundleId() == bundleId) remove(*service);
}

std::vector<ServiceRegistry::Service> ServiceRegistry::find(const std::string& interfaceName,
                                                            const LDAPFilter& filter) const {
    std::vector<Service> found = snapshot();
    const auto isOther = [&](const Service& service) {
        return !service->object(interfaceName) || (filter && !filter.Match(ServiceReferenceBase(service)));
    };
    found.erase(std::remove_if(found.begin(), found.end(), isOther), found.end());
    std::stable_sort(found.begin(), found.end(), [](const Service& left, const Service& right) {
        return left->ranking() > right->ranking();
    });
    return found;
}

void ServiceRegistry::listen(std::weak_ptr<ServiceListener> listener) {
    const std::lock_guard lock(mutex_);
    listeners_.push_back(std::move(listener));
}

std::vector<ServiceRegistry::Service> ServiceRegistry::snapshot() const {
    const std::lock_guard lock(mutex_);
    return services_;
}

void ServiceRegistry::tell(const RegisteredService& service) {
    std::vector<std::weak_ptr<ServiceListener>> listeners;
    {
        const std::lock_guard lock(mutex_);
        const auto isGone = [](const auto& listener) { return listener.expired(); };
        listeners_.erase(std::remove_if(listeners_.begin(), listeners_.end(), isGone), listeners_.end());
        listeners = listeners_;
    }
    for (const auto& each : listeners)
        if (const auto listener = each.lock()) listener->serviceChanged(service);
}

}  // namespace cppmicroservices::detail
