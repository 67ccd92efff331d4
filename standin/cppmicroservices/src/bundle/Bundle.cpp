#include "cppmicroservices/Bundle.h"

#include "bundle/InstalledBundle.hpp"
#include "cppmicroservices/BundleContext.h"

#include <stdexcept>
#include <utility>

namespace cppmicroservices {

Bundle::Bundle(std::shared_ptr<detail::InstalledBundle> bundle) : bundle_(std::move(bundle)) {}

Bundle::State Bundle::GetState() const {
    return Installed().state();
}

long Bundle::GetBundleId() const {
    return Installed().id();
}

std::string Bundle::GetLocation() const {
    return Installed().location();
}

std::string Bundle::GetSymbolicName() const {
    return Installed().manifest().symbolicName;
}

const AnyMap& Bundle::GetHeaders() const {
    return Installed().manifest().headers;
}

BundleContext Bundle::GetBundleContext() const {
    return BundleContext(Installed().context());
}

void Bundle::Start() {
    Installed().start();
}

void Bundle::Stop() {
    Installed().stop();
}

void Bundle::Uninstall() {
    Installed().uninstall();
}

detail::InstalledBundle& Bundle::Installed() const {
    if (!bundle_) throw std::invalid_argument("there is no bundle");
    return *bundle_;
}

}  // namespace cppmicroservices
