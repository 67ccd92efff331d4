#pragma once

#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/ServiceReference.h>

#include <cppmicroservices/servicecomponent/ComponentContext.hpp>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace testsupport {

/// The context of a component that stands in no framework.
class BoundContext : public cppmicroservices::service::component::ComponentContext {
public:
    /// Gives the service bound to the reference of that name, as that interface; may throw.
    using Locate =
        std::function<std::shared_ptr<void>(const std::string& reference, const std::string& interface)>;

    explicit BoundContext(Locate locate) : locate_(std::move(locate)) {}

    std::unordered_map<std::string, cppmicroservices::Any> GetProperties() const override { return {}; }
    cppmicroservices::BundleContext GetBundleContext() const override { return {}; }

    // Of these, a framework declares what it offers.
    virtual cppmicroservices::Bundle GetUsingBundle() const { return {}; }
    virtual void EnableComponent(const std::string&) {}
    virtual void DisableComponent(const std::string&) {}
    virtual cppmicroservices::ServiceReferenceBase GetServiceReference() const {
        return cppmicroservices::ServiceReferenceU();
    }

protected:
    std::shared_ptr<void> LocateService(const std::string& reference,
                                        const std::string& interface) const override {
        return locate_(reference, interface);
    }
    virtual std::shared_ptr<void> LocateService(const std::string&,
                                                const cppmicroservices::ServiceReferenceBase&) const {
        return nullptr;
    }
    virtual std::vector<std::shared_ptr<void>> LocateServices(const std::string&, const std::string&) const {
        return {};
    }

private:
    Locate locate_;
};

}  // namespace testsupport
