#include "LoadedBundle.hpp"

#include <cppmicroservices/ServiceInterface.h>
#include <dlfcn.h>

#include <stdexcept>
#include <string>

#include "BoundContext.hpp"

namespace testsupport {

using foundation::storage::provider::PhysicalProviderFactory;
using foundation::thirdpartylibmgmt::Initializer;

namespace {

void* loaded(void* found) {
    if (found == nullptr) throw std::runtime_error(dlerror());  // NOLINT(concurrency-mt-unsafe)
    return found;
}

template <typename Function>
void find(void* library, const char* name, Function*& function) {
    function = reinterpret_cast<Function*>(loaded(dlsym(library, name)));
}

}  // namespace

LoadedBundle::LoadedBundle() : library_(loaded(dlopen(BUNDLE_FILE, RTLD_NOW | RTLD_LOCAL))) {
    find(library_, "NewInstance_storage_s3provider_S3ProviderFactoryV2", newInstance);
    find(library_, "DeleteInstance_storage_s3provider_S3ProviderFactoryV2", deleteInstance);
    find(library_, "_us_set_bundle_context_instance_com_quorvex_s3provider", setBundleContext);
}

LoadedBundle::~LoadedBundle() {
    dlclose(library_);
}

bool LoadedBundle::isLoaded() {
    void* const library = dlopen(BUNDLE_FILE, RTLD_NOW | RTLD_NOLOAD);
    if (library != nullptr) dlclose(library);
    return library != nullptr;
}

ActiveComponent::ActiveComponent(const LoadedBundle& bundle, const std::shared_ptr<Initializer>& initializer)
    : instance_(bundle.newInstance(), bundle.deleteInstance) {
    instance_->CreateInstance(std::make_shared<BoundContext>(
        [initializer](const std::string&, const std::string&) { return initializer; }));
    instance_->Activate();
}

ActiveComponent::~ActiveComponent() {
    instance_->Deactivate();
}

std::shared_ptr<PhysicalProviderFactory> ActiveComponent::factory() const {
    const auto interfaces = instance_->GetInterfaceMap();
    const auto found = interfaces->find(us_service_interface_iid<PhysicalProviderFactory>());
    return found == interfaces->end() ? nullptr
                                      : std::static_pointer_cast<PhysicalProviderFactory>(found->second);
}

}  // namespace testsupport
