#include "RunningFramework.hpp"

#include <cppmicroservices/Any.h>

#include <stdexcept>
#include <utility>

namespace testsupport {

using cppmicroservices::ServiceReference;

RunningFramework::Registration RunningFramework::registerInitializer(
    const std::string& library, std::shared_ptr<Initializer> initializer) {
    return framework_.context().RegisterService<Initializer>(std::move(initializer),
                                                             {{"thirdpartylibmgmt-library-name", library}});
}

std::vector<ServiceReference<PhysicalProviderFactory>> RunningFramework::offers(const std::string& filter) {
    return framework_.context().GetServiceReferences<PhysicalProviderFactory>(filter);
}

std::shared_ptr<PhysicalProviderFactory> RunningFramework::factory() {
    const auto found = offers();
    if (found.size() != 1) return nullptr;
    try {
        return framework_.context().GetService(found.front());
    } catch (const std::invalid_argument&) {
        return nullptr;  // what the real framework says of a service that was withdrawn meanwhile
    }
}

}  // namespace testsupport
