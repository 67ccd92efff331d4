#include "services/RegisteredService.hpp"

#include "cppmicroservices/Constants.h"
#include "services/ServiceRegistry.hpp"

#include <algorithm>
#include <stdexcept>
#include <utility>
#include <vector>

namespace cppmicroservices::detail {

namespace {

using Names = std::vector<std::string>;

ServiceProperties withOwnProperties(ServiceProperties properties, long id, const InterfaceMap& objects) {
    Names interfaces;
    for (const auto& [name, object] : objects)
        interfaces.push_back(name);
    properties[Constants::OBJECTCLASS] = std::move(interfaces);
    properties[Constants::SERVICE_ID] = id;
    properties[Constants::SERVICE_SCOPE] = Constants::SCOPE_SINGLETON;
    return properties;
}

Any propertyOf(const ServiceProperties& properties, const std::string& name) {
    const auto exact = properties.find(name);
    if (exact != properties.end()) return exact->second;
    const auto found = std::find_if(properties.begin(), properties.end(),
                                    [&](const auto& each) { return equalIgnoringCase(each.first, name); });
    return found == properties.end() ? Any() : found->second;
}

int rankingOf(const ServiceProperties& properties) {
    const Any value = propertyOf(properties, Constants::SERVICE_RANKING);
    const int* ranking = any_cast<int>(&value);
    return ranking ? *ranking : 0;
}

}  // namespace

RegisteredService::RegisteredService(std::weak_ptr<ServiceRegistry> registry, long id, long bundleId,
                                     InterfaceMapConstPtr objects, ServiceProperties properties)
    : registry_(std::move(registry)),
      id_(id),
      bundleId_(bundleId),
      properties_(withOwnProperties(std::move(properties), id, *objects)),
      ranking_(rankingOf(properties_)),
      objects_(std::move(objects)) {}

Any RegisteredService::property(const std::string& name) const {
    return propertyOf(properties_, name);
}

bool RegisteredService::provides(const std::string& interfaceName) const {
    const Names* names = any_cast<Names>(&properties_.at(Constants::OBJECTCLASS));
    return names && std::find(names->begin(), names->end(), interfaceName) != names->end();
}

std::shared_ptr<void> RegisteredService::object(const std::string& interfaceName) const {
    const std::lock_guard lock(mutex_);
    if (!objects_) return nullptr;
    const auto found = objects_->find(interfaceName);
    return found == objects_->end() ? nullptr : found->second;
}

bool RegisteredService::isRegistered() const {
    const std::lock_guard lock(mutex_);
    return objects_ != nullptr;
}

InterfaceMapConstPtr RegisteredService::release() {
    const std::lock_guard lock(mutex_);
    return std::exchange(objects_, nullptr);
}

void RegisteredService::withdraw() {
    const auto registry = registry_.lock();
    if (!registry || !registry->remove(*this))
        throw std::logic_error("the service isn't registered any more");
}

}  // namespace cppmicroservices::detail
