#pragma once

#include <cppmicroservices/GlobalConfig.h>

namespace cppmicroservices {
class BundleContextPrivate;
namespace service::component::detail {
class ComponentInstance;
}
}  // namespace cppmicroservices

namespace storage::s3provider {

/// The framework's context of this bundle as it was set last; null before. It is the framework's own, and
/// opaque. Any thread, also while another one sets it.
cppmicroservices::BundleContextPrivate* bundleContext() noexcept;

}  // namespace storage::s3provider

// The library's whole interface. The names are made of the bundle's and the implementation class's names by
// the conventions of CppMicroServices and its Declarative Services.
extern "C" {

/// A new instance of the component, which makes the factory when it is activated. The caller owns it, and
/// gives it back to DeleteInstance_….
US_ABI_EXPORT cppmicroservices::service::component::detail::ComponentInstance*
NewInstance_storage_s3provider_S3ProviderFactoryV2();

/// Ends an instance; null is ignored. The factory that it made lives on for as long as others hold it.
US_ABI_EXPORT void DeleteInstance_storage_s3provider_S3ProviderFactoryV2(
    cppmicroservices::service::component::detail::ComponentInstance* instance);

/// Keeps the bundle's context for bundleContext(). Any thread.
US_ABI_EXPORT void _us_set_bundle_context_instance_com_quorvex_s3provider(  // NOLINT(*-reserved-identifier)
    cppmicroservices::BundleContextPrivate* context);
}
