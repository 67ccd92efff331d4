#pragma once

#include <cppmicroservices/servicecomponent/detail/ComponentInstance.hpp>
#include <foundation/storage/provider/PhysicalProviderFactory.hpp>
#include <foundation/thirdpartylibmgmt/Initializer.hpp>
#include <memory>

namespace cppmicroservices {
class BundleContextPrivate;
}

namespace testsupport {

using cppmicroservices::service::component::detail::ComponentInstance;

/// The plug-in's library, loaded as a framework loads it, and unloaded at the end: what came of it,
/// exceptions too, must be gone by then.
class LoadedBundle {
public:
    /// Throws std::runtime_error with the loader's own words.
    LoadedBundle();
    ~LoadedBundle();
    LoadedBundle(const LoadedBundle&) = delete;
    LoadedBundle& operator=(const LoadedBundle&) = delete;

    /// Whether somebody in this process has it loaded.
    static bool isLoaded();

    // Its three entry points.
    ComponentInstance* (*newInstance)() = nullptr;
    void (*deleteInstance)(ComponentInstance*) = nullptr;
    void (*setBundleContext)(cppmicroservices::BundleContextPrivate*) = nullptr;

private:
    void* library_;
};

/// An instance of the bundle's component, created with that service for its one reference, and activated.
class ActiveComponent {
public:
    ActiveComponent(const LoadedBundle& bundle,
                    const std::shared_ptr<foundation::thirdpartylibmgmt::Initializer>& initializer);
    ~ActiveComponent();
    ActiveComponent(const ActiveComponent&) = delete;
    ActiveComponent& operator=(const ActiveComponent&) = delete;

    /// Null when the instance doesn't offer one.
    std::shared_ptr<foundation::storage::provider::PhysicalProviderFactory> factory() const;

    ComponentInstance& instance() { return *instance_; }

private:
    std::unique_ptr<ComponentInstance, void (*)(ComponentInstance*)> instance_;
};

}  // namespace testsupport
