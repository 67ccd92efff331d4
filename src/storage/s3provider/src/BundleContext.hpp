#pragma once

namespace cppmicroservices {
class BundleContextPrivate;
}

namespace storage::s3provider {

/// The framework's context of this bundle as it was set last; null before. It is the framework's own, and
/// opaque. Any thread, also while another one sets it.
cppmicroservices::BundleContextPrivate* bundleContext() noexcept;

/// Any thread.
void setBundleContext(cppmicroservices::BundleContextPrivate* context) noexcept;

}  // namespace storage::s3provider
