#include "framework/BundleContextPrivate.hpp"

#include "bundle/InstalledBundle.hpp"
#include "framework/FrameworkCore.hpp"

#include <utility>

namespace cppmicroservices {

BundleContextPrivate::BundleContextPrivate(std::weak_ptr<detail::FrameworkCore> core)
    : core_(std::move(core)), bundleId_(0) {}

BundleContextPrivate::BundleContextPrivate(std::weak_ptr<detail::FrameworkCore> core,
                                           std::weak_ptr<detail::InstalledBundle> bundle, long bundleId)
    : core_(std::move(core)), bundle_(std::move(bundle)), bundleId_(bundleId) {}

std::shared_ptr<detail::FrameworkCore> BundleContextPrivate::core() const {
    auto core = core_.lock();
    if (!core || !core->isRunning()) return nullptr;
    if (bundleId_ == 0) return core;
    const auto bundle = bundle_.lock();
    return bundle && bundle->isRunning() ? core : nullptr;
}

}  // namespace cppmicroservices
