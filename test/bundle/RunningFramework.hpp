#pragma once

#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/ServiceReference.h>
#include <cppmicroservices/ServiceRegistration.h>

#include <foundation/storage/provider/PhysicalProviderFactory.hpp>
#include <foundation/thirdpartylibmgmt/Initializer.hpp>
#include <memory>
#include <string>
#include <vector>

#include "support/process/StartedFramework.hpp"

namespace testsupport {

using foundation::storage::provider::PhysicalProviderFactory;
using foundation::thirdpartylibmgmt::Initializer;

/// A host's framework with Declarative Services and the plug-in's bundle, both started. It stops at its end.
class RunningFramework {
public:
    using Registration = cppmicroservices::ServiceRegistration<Initializer>;

    /// Registers the initializer of that library.
    Registration registerInitializer(
        const std::string& library = "aws-sdk-cpp",
        std::shared_ptr<Initializer> initializer = std::make_shared<Initializer>());

    /// The factories on offer that the filter lets through.
    std::vector<cppmicroservices::ServiceReference<PhysicalProviderFactory>> offers(
        const std::string& filter = {});

    /// The object of the one factory on offer; null when there isn't one.
    std::shared_ptr<PhysicalProviderFactory> factory();

    cppmicroservices::Bundle plugIn() const { return plugIn_; }

private:
    StartedFramework framework_;
    cppmicroservices::Bundle plugIn_ = framework_.start(BUNDLE_FILE);
};

}  // namespace testsupport
