#pragma once

#include "cppmicroservices/Bundle.h"
#include "cppmicroservices/BundleContext.h"

#include <chrono>
#include <memory>
#include <string>

namespace cppmicroservices {

class FrameworkEvent;

namespace detail {
class FrameworkCore;
}

/// Installed bundles, and the services between them. Frameworks in one process don't know of each other, but
/// share the libraries: a library knows the context it was given last. A copy is the same framework; the last
/// one stops it. Any thread may call any operation.
class Framework {
public:
    explicit Framework(std::shared_ptr<detail::FrameworkCore> core);

    /// Makes the context valid. Does nothing when it is.
    void Init();

    /// Init(), and Declarative Services; there is nothing else to be installed for them.
    void Start();

    /// Stops all bundles, the last one installed first, and withdraws all services.
    void Stop();

    /// Waits until it is stopped; zero is forever.
    FrameworkEvent WaitForStop(const std::chrono::milliseconds& timeout);

    Bundle::State GetState() const;

    /// Valid from Init() to the end of Stop().
    BundleContext GetBundleContext() const;

private:
    std::shared_ptr<detail::FrameworkCore> core_;
};

}  // namespace cppmicroservices
