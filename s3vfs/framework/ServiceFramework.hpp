#pragma once

#include <cppmicroservices/Bundle.h>
#include <cppmicroservices/Framework.h>

#include <cppmicroservices/servicecomponent/runtime/dto/ComponentConfigurationDTO.hpp>
#include <filesystem>
#include <foundation/storage/provider/PhysicalProviderFactory.hpp>
#include <memory>
#include <string>
#include <vector>

namespace s3vfs {

/// A service framework, run as a host runs it: with Declarative Services, the AWS SDK's initializer, and the
/// plug-in's bundle.
///
/// At its end it stops, and the SDK is shut down. Whatever came of the bundle must be gone by then,
/// exceptions included: the framework may unload it.
class ServiceFramework {
public:
    using Factory = foundation::storage::provider::PhysicalProviderFactory;
    using Component = cppmicroservices::service::component::runtime::dto::ComponentConfigurationDTO;

    /// Starts without the bundle. `bundleFile` is where it is; empty when it is beside the program. Throws
    /// std::exception when the framework can't be started.
    explicit ServiceFramework(std::filesystem::path bundleFile = {});
    ~ServiceFramework();
    ServiceFramework(const ServiceFramework&) = delete;
    ServiceFramework& operator=(const ServiceFramework&) = delete;

    /// The plug-in's bundle, started. Throws std::exception when there is none, or it can't be started.
    cppmicroservices::Bundle bundle();

    /// How the components of the started bundle fare.
    std::vector<Component> components();

    /// The factory for the scheme s3; null when nobody offers one.
    std::shared_ptr<Factory> findProviderFactory();

    /// The same. Throws std::runtime_error, which tells why, when nobody offers one.
    std::shared_ptr<Factory> providerFactory();

private:
    ServiceFramework(std::filesystem::path bundleFile, cppmicroservices::Framework framework);
    cppmicroservices::Bundle start(const std::filesystem::path& file);

    const std::filesystem::path bundleFile_;
    cppmicroservices::Framework framework_;
};

}  // namespace s3vfs
