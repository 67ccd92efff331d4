#pragma once

#include <memory>

namespace cppmicroservices {

namespace detail {
class FrameworkCore;
class InstalledBundle;
}  // namespace detail

/// What a context is for. A library gets its address when it is started, and may keep it while the bundle is
/// installed.
class BundleContextPrivate {
public:
    /// The framework's own context.
    explicit BundleContextPrivate(std::weak_ptr<detail::FrameworkCore> core);

    /// A bundle's, valid while that is starting, active or stopping.
    BundleContextPrivate(std::weak_ptr<detail::FrameworkCore> core,
                         std::weak_ptr<detail::InstalledBundle> bundle, long bundleId);

    /// 0 for the framework.
    long bundleId() const { return bundleId_; }

    /// The framework; null while the context isn't valid.
    std::shared_ptr<detail::FrameworkCore> core() const;

private:
    const std::weak_ptr<detail::FrameworkCore> core_;
    const std::weak_ptr<detail::InstalledBundle> bundle_;
    const long bundleId_;
};

}  // namespace cppmicroservices
