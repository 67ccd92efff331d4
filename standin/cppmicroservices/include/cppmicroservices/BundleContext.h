#pragma once

#include "cppmicroservices/Bundle.h"
#include "cppmicroservices/ServiceProperties.h"
#include "cppmicroservices/ServiceReference.h"
#include "cppmicroservices/ServiceRegistration.h"

#include <memory>
#include <string>
#include <vector>

namespace cppmicroservices {

class BundleContextPrivate;

namespace detail {
class FrameworkCore;
}

/// A bundle's access to its framework. Valid while the bundle is starting, active or stopping; otherwise
/// everything throws IllegalStateException. Any thread may call any operation.
class BundleContext {
public:
    BundleContext() = default;
    explicit BundleContext(std::shared_ptr<BundleContextPrivate> context);

    explicit operator bool() const;

    /// Installs a shared library from its path; nothing of it runs before it is started. A library that is
    /// installed already is given as it is. Throws std::runtime_error when the file can't be read, has no
    /// resources, or has a manifest that isn't understood.
    std::vector<Bundle> InstallBundles(const std::string& location);

    /// What is installed, in the order of installation.
    std::vector<Bundle> GetBundles() const;

    /// Registers an object under the interfaces; components that wait for it are activated on this thread, or
    /// on another that is busy with them. Throws std::invalid_argument when there is no object, and
    /// IllegalStateException also when the bundle was stopped meanwhile.
    template <class I1, class... Interfaces, class Class>
    ServiceRegistration<I1, Interfaces...> RegisterService(const std::shared_ptr<Class>& object,
                                                           const ServiceProperties& properties = {}) {
        return ServiceRegistration<I1, Interfaces...>(
            RegisterService(MakeInterfaceMap<I1, Interfaces...>(object), properties));
    }
    ServiceRegistrationU RegisterService(const InterfaceMapConstPtr& interfaces,
                                         const ServiceProperties& properties = {});

    /// The services of an interface that the filter lets through, the one that GetServiceReference gives
    /// first. Throws std::invalid_argument for a malformed filter.
    template <class S>
    std::vector<ServiceReference<S>> GetServiceReferences(const std::string& filter = {}) const {
        const auto all = GetServiceReferences(us_service_interface_iid<S>(), filter);
        return {all.begin(), all.end()};
    }
    std::vector<ServiceReferenceU> GetServiceReferences(const std::string& interfaceName,
                                                        const std::string& filter = {}) const;

    /// The service of the highest ranking, of these the first one registered; no service when there is none.
    template <class S>
    ServiceReference<S> GetServiceReference() const {
        return GetServiceReference(us_service_interface_iid<S>());
    }
    ServiceReferenceU GetServiceReference(const std::string& interfaceName) const;

    /// The service's object. Throws std::invalid_argument when no such service is registered.
    template <class S>
    std::shared_ptr<S> GetService(const ServiceReference<S>& reference) const {
        return std::static_pointer_cast<S>(GetServiceObject(reference, us_service_interface_iid<S>()));
    }

private:
    std::shared_ptr<void> GetServiceObject(const ServiceReferenceBase& reference,
                                           const std::string& interfaceName) const;
    std::shared_ptr<detail::FrameworkCore> Core() const;

    std::shared_ptr<BundleContextPrivate> context_;
};

}  // namespace cppmicroservices
