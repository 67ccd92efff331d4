#include "cppmicroservices/BundleContext.h"

#include "bundle/InstalledBundle.hpp"
#include "cppmicroservices/IllegalStateException.h"
#include "cppmicroservices/LDAPFilter.h"
#include "framework/BundleContextPrivate.hpp"
#include "framework/FrameworkCore.hpp"

#include <stdexcept>
#include <utility>

namespace cppmicroservices {

BundleContextPrivate::BundleContextPrivate(std::weak_ptr<detail::FrameworkCore> core)
    : core_(std::move(core)), bundleId_(0) {}

BundleContextPrivate::BundleContextPrivate(std::weak_ptr<detail::FrameworkCore> core,
                                           std::weak_ptr<detail::InstalledBundle> bundle, long bundleId)
    : core_(std::move(core)), bundle_(std::move(bundle)), bundleId_(bundleId) {}

std::shared_ptr<detail::FrameworkCore> BundleContextPrivate::core() const {
    auto core = core_.lock();
    if (!core || !core->isRunning()) return nullptr;
    if (bundleId_ == 0) return core;
    const auto bundle = bundle_.lock();
    return bundle && bundle->isRunning() ? core : nullptr;
}

BundleContext::BundleContext(std::shared_ptr<BundleContextPrivate> context) : context_(std::move(context)) {}

BundleContext::operator bool() const {
    return context_ && context_->core();
}

std::vector<Bundle> BundleContext::InstallBundles(const std::string& location) {
    return {Bundle(Core()->install(location))};
}

std::vector<Bundle> BundleContext::GetBundles() const {
    std::vector<Bundle> bundles;
    for (auto& bundle : Core()->bundles())
        bundles.emplace_back(bundle);
    return bundles;
}

ServiceRegistrationU BundleContext::RegisterService(const InterfaceMapConstPtr& interfaces,
                                                    const ServiceProperties& properties) {
    const auto registry = Core()->registry();
    const auto service = registry->add(context_->bundleId(), interfaces, properties);
    if (context_->core()) return ServiceRegistrationBase(service);
    // Its bundle was stopped since it was asked, and has withdrawn its services.
    registry->remove(*service);
    throw IllegalStateException("a service is registered while its bundle or framework is stopped");
}

std::vector<ServiceReferenceU> BundleContext::GetServiceReferences(const std::string& interfaceName,
                                                                   const std::string& filter) const {
    std::vector<ServiceReferenceU> references;
    const LDAPFilter parsed = filter.empty() ? LDAPFilter() : LDAPFilter(filter);
    for (auto& service : Core()->registry()->find(interfaceName, parsed))
        references.emplace_back(ServiceReferenceBase(service));
    return references;
}

ServiceReferenceU BundleContext::GetServiceReference(const std::string& interfaceName) const {
    const auto references = GetServiceReferences(interfaceName);
    return references.empty() ? ServiceReferenceU() : references.front();
}

std::shared_ptr<void> BundleContext::GetServiceObject(const ServiceReferenceBase& reference,
                                                      const std::string& interfaceName) const {
    Core();
    auto object = reference.service_ ? reference.service_->object(interfaceName) : nullptr;
    if (!object) throw std::invalid_argument("there is no such service of " + interfaceName + " any more");
    return object;
}

std::shared_ptr<detail::FrameworkCore> BundleContext::Core() const {
    if (auto core = context_ ? context_->core() : nullptr) return core;
    throw IllegalStateException("the context of a bundle or framework that isn't active is used");
}

}  // namespace cppmicroservices
