#pragma once

#include "cppmicroservices/AnyMap.h"

#include <cstdint>
#include <memory>
#include <string>

namespace cppmicroservices {

class BundleContext;

namespace detail {
class InstalledBundle;
}

/// A shared library with a manifest, as a framework has it installed. A copy is the same bundle. Any thread
/// may call any operation; two threads that start and stop one bundle take turns.
class Bundle {
public:
    enum State : std::uint32_t {
        STATE_UNINSTALLED = 0x01,
        STATE_INSTALLED = 0x02,
        STATE_RESOLVED = 0x04,
        STATE_STARTING = 0x08,
        STATE_STOPPING = 0x10,
        STATE_ACTIVE = 0x20
    };

    Bundle() = default;
    explicit Bundle(std::shared_ptr<detail::InstalledBundle> bundle);

    explicit operator bool() const { return bundle_ != nullptr; }

    bool operator==(const Bundle& other) const { return bundle_ == other.bundle_; }
    bool operator!=(const Bundle& other) const { return !(*this == other); }

    State GetState() const;

    /// Counts from 1, in the order of installation.
    long GetBundleId() const;

    /// The path it was installed from.
    std::string GetLocation() const;

    std::string GetSymbolicName() const;

    /// The manifest. Names match in any case. Texts are std::string, whole numbers int, or long where they
    /// are too large for it, other numbers double, objects AnyMap, lists std::vector<Any>, null an empty
    /// value.
    const AnyMap& GetHeaders() const;

    /// Valid while the bundle is starting, active or stopping.
    BundleContext GetBundleContext() const;

    /// Loads the library and looks after its components from now on. Does nothing when it is active. Throws
    /// SharedLibraryException when the library can't be loaded, std::runtime_error when it lacks a function,
    /// std::logic_error when the bundle is uninstalled, and IllegalStateException when the framework isn't
    /// started.
    void Start();

    /// Deactivates its components and withdraws its services. The library stays loaded, since others may hold
    /// objects of it. Does nothing when it isn't active.
    void Stop();

    /// Stops it for good. A file can be installed again afterwards. Throws std::logic_error when it is
    /// uninstalled already.
    void Uninstall();

private:
    friend class BundleContext;

    detail::InstalledBundle& Installed() const;

    std::shared_ptr<detail::InstalledBundle> bundle_;
};

}  // namespace cppmicroservices
