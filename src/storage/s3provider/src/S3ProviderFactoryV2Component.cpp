#include "S3ProviderFactoryV2Component.hpp"

#include <atomic>
#include <cppmicroservices/servicecomponent/detail/ComponentInstanceImpl.hpp>
#include <foundation/storage/provider/PhysicalProviderFactory.hpp>
#include <foundation/thirdpartylibmgmt/Initializer.hpp>
#include <memory>
#include <tuple>

#include "S3ProviderFactoryV2.hpp"

using cppmicroservices::service::component::detail::ComponentInstance;
using cppmicroservices::service::component::detail::ComponentInstanceImpl;

namespace {

std::atomic<cppmicroservices::BundleContextPrivate*> contextSlot{nullptr};

using Interfaces = std::tuple<foundation::storage::provider::PhysicalProviderFactory>;
using Component = ComponentInstanceImpl<storage::s3provider::S3ProviderFactoryV2, Interfaces,
                                        std::shared_ptr<foundation::thirdpartylibmgmt::Initializer>>;

}  // namespace

cppmicroservices::BundleContextPrivate* storage::s3provider::bundleContext() noexcept {
    return contextSlot.load();
}

ComponentInstance* NewInstance_storage_s3provider_S3ProviderFactoryV2() {
    return new Component({"awsInitializer"});
}

void DeleteInstance_storage_s3provider_S3ProviderFactoryV2(ComponentInstance* instance) {
    delete instance;
}

void _us_set_bundle_context_instance_com_quorvex_s3provider(  // NOLINT(*-reserved-identifier)
    cppmicroservices::BundleContextPrivate* context) {
    contextSlot.exchange(context);
}
