#pragma once

#include "components/ComponentDescription.hpp"
#include "cppmicroservices/servicecomponent/ComponentContext.hpp"
#include "services/ServiceRegistry.hpp"

#include <memory>
#include <string>
#include <vector>

namespace cppmicroservices::detail {

/// A service that a reference is bound to, with its object, which lives at least as long as this.
struct BoundService {
    ServiceRegistry::Service service;
    std::shared_ptr<void> object;
};

/// The context of an instance whose references are bound. Immutable, but that the services may be withdrawn.
class BoundContext final : public service::component::ComponentContext {
public:
    /// One service for each of the description's references, in their order.
    BoundContext(const ComponentDescription& description, ServiceProperties properties, BundleContext bundle,
                 std::vector<BoundService> services);

    /// Whether all services are registered still.
    bool isBound() const;

    const std::vector<BoundService>& services() const { return services_; }

    ServiceProperties GetProperties() const override { return properties_; }
    BundleContext GetBundleContext() const override { return bundle_; }

private:
    std::shared_ptr<void> LocateService(const std::string& reference,
                                        const std::string& interfaceName) const override;

    const std::vector<ReferenceDescription> references_;
    const ServiceProperties properties_;
    const BundleContext bundle_;
    const std::vector<BoundService> services_;
};

}  // namespace cppmicroservices::detail
