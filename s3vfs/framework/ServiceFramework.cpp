#include "framework/ServiceFramework.hpp"

#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/FrameworkFactory.h>

#include <chrono>
#include <cppmicroservices/servicecomponent/runtime/ServiceComponentRuntime.hpp>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "framework/AwsSdk.hpp"
#include "framework/BundleFile.hpp"
#include "framework/ComponentText.hpp"

namespace s3vfs {

namespace fs = std::filesystem;
using cppmicroservices::Bundle;
using cppmicroservices::service::component::runtime::ServiceComponentRuntime;
using foundation::thirdpartylibmgmt::Initializer;

namespace {

/// An absolute one, since the loader looks for bare names elsewhere.
fs::path chosenBundle(const fs::path& file) {
    if (file.empty()) return bundleBesideProgram();
    if (!fs::is_regular_file(file))
        throw std::runtime_error("there is no file '" + file.string() + "' to take for the plug-in's bundle");
    return fs::absolute(file);
}

}  // namespace

ServiceFramework::ServiceFramework(fs::path bundleFile, cppmicroservices::Framework framework)
    : bundleFile_(std::move(bundleFile)), framework_(std::move(framework)) {
    framework_.Start();
}

// The destructor stops the framework also when this fails.
ServiceFramework::ServiceFramework(fs::path bundleFile)
    : ServiceFramework(std::move(bundleFile), cppmicroservices::FrameworkFactory().NewFramework()) {
    std::istringstream services(DECLARATIVE_SERVICES_BUNDLES);
    for (std::string file; std::getline(services, file, ':');)
        start(file);
    framework_.GetBundleContext().RegisterService<Initializer>(
        std::make_shared<AwsSdk>(), {{"thirdpartylibmgmt-library-name", std::string("aws-sdk-cpp")}});
}

ServiceFramework::~ServiceFramework() {
    framework_.Stop();
    framework_.WaitForStop(std::chrono::milliseconds::zero());
}

Bundle ServiceFramework::start(const fs::path& file) {
    const auto bundles = framework_.GetBundleContext().InstallBundles(file.string());
    if (bundles.empty()) throw std::runtime_error("'" + file.string() + "' is no bundle");
    Bundle bundle = bundles.front();
    bundle.Start();
    return bundle;
}

Bundle ServiceFramework::bundle() {
    return start(chosenBundle(bundleFile_));
}

std::vector<ServiceFramework::Component> ServiceFramework::components() {
    auto context = framework_.GetBundleContext();
    const auto runtime = context.GetService(context.GetServiceReference<ServiceComponentRuntime>());
    std::vector<Component> components;
    for (const auto& description : runtime->GetComponentDescriptionDTOs({bundle()}))
        for (auto& component : runtime->GetComponentConfigurationDTOs(description))
            components.push_back(std::move(component));
    return components;
}

std::shared_ptr<ServiceFramework::Factory> ServiceFramework::findProviderFactory() {
    bundle();
    auto context = framework_.GetBundleContext();
    const auto offered = context.GetServiceReferences<Factory>("(scheme=s3)");
    return offered.empty() ? nullptr : context.GetService(offered.front());
}

std::shared_ptr<ServiceFramework::Factory> ServiceFramework::providerFactory() {
    if (auto factory = findProviderFactory()) return factory;
    std::string why = "the bundle " + bundle().GetLocation() + " offers no factory for the scheme s3";
    for (const Component& component : components())
        why += "; " + describe(component);
    throw std::runtime_error(why);
}

}  // namespace s3vfs
