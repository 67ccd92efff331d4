#include "BundleContext.hpp"

#include <atomic>

namespace storage::s3provider {

namespace {

std::atomic<cppmicroservices::BundleContextPrivate*> slot{nullptr};

}  // namespace

cppmicroservices::BundleContextPrivate* bundleContext() noexcept {
    return slot.load();
}

void setBundleContext(cppmicroservices::BundleContextPrivate* context) noexcept {
    slot.exchange(context);
}

}  // namespace storage::s3provider
