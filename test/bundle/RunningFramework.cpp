#include "RunningFramework.hpp"

#include <cppmicroservices/Any.h>
#include <cppmicroservices/FrameworkEvent.h>
#include <cppmicroservices/FrameworkFactory.h>

#include <chrono>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace testsupport {

using cppmicroservices::Bundle;
using cppmicroservices::FrameworkFactory;
using cppmicroservices::ServiceReference;

RunningFramework::RunningFramework() : framework_(FrameworkFactory().NewFramework()) {
    framework_.Start();
    std::istringstream services(DECLARATIVE_SERVICES_BUNDLES);
    for (std::string file; std::getline(services, file, ';');)
        start(file);
    plugIn_ = start(BUNDLE_FILE);
}

RunningFramework::~RunningFramework() {
    framework_.Stop();
    framework_.WaitForStop(std::chrono::milliseconds::zero());
}

Bundle RunningFramework::start(const std::string& file) {
    Bundle bundle = framework_.GetBundleContext().InstallBundles(file).at(0);
    bundle.Start();
    return bundle;
}

RunningFramework::Registration RunningFramework::registerInitializer(
    const std::string& library, std::shared_ptr<Initializer> initializer) {
    return framework_.GetBundleContext().RegisterService<Initializer>(
        std::move(initializer), {{"thirdpartylibmgmt-library-name", library}});
}

std::vector<ServiceReference<PhysicalProviderFactory>> RunningFramework::offers(const std::string& filter) {
    return framework_.GetBundleContext().GetServiceReferences<PhysicalProviderFactory>(filter);
}

std::shared_ptr<PhysicalProviderFactory> RunningFramework::factory() {
    const auto found = offers();
    if (found.size() != 1) return nullptr;
    try {
        return framework_.GetBundleContext().GetService(found.front());
    } catch (const std::invalid_argument&) {
        return nullptr;  // what the real framework says of a service that was withdrawn meanwhile
    }
}

}  // namespace testsupport
