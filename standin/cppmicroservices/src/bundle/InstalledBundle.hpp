#pragma once

#include "bundle/Manifest.hpp"
#include "components/Component.hpp"
#include "cppmicroservices/Bundle.h"
#include "framework/BundleContextPrivate.hpp"

#include <atomic>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace cppmicroservices::detail {

/// A bundle of one framework. Any thread may call any operation. Starting and stopping take turns: a
/// component must not do either to its own bundle, nor to one whose start or stop is under way further up its
/// stack.
class InstalledBundle : public std::enable_shared_from_this<InstalledBundle> {
public:
    InstalledBundle(std::weak_ptr<FrameworkCore> core, long id, std::string location, Manifest manifest);
    InstalledBundle(const InstalledBundle&) = delete;
    InstalledBundle& operator=(const InstalledBundle&) = delete;
    ~InstalledBundle();

    long id() const { return id_; }
    const std::string& location() const { return location_; }
    const Manifest& manifest() const { return manifest_; }
    Bundle::State state() const { return state_; }

    /// Whether its context is valid: from the beginning of its start until everything of it has been stopped.
    bool isRunning() const;

    std::shared_ptr<BundleContextPrivate> context();

    /// Those of its start; none unless it is active.
    std::vector<std::shared_ptr<Component>> components() const;

    void start();
    void stop();
    void uninstall();

private:
    SharedLibrary load();
    std::vector<std::shared_ptr<Component>> makeComponents(const SharedLibrary& library, FrameworkCore& core);
    void adopt(std::vector<std::shared_ptr<Component>> components);
    void stopTakingTurn();
    void withdrawServices();

    const std::weak_ptr<FrameworkCore> core_;
    const long id_;
    const std::string location_;
    const std::filesystem::path file_;
    const Manifest manifest_;

    std::mutex turn_;  // held while it is started or stopped
    std::atomic<Bundle::State> state_ = Bundle::STATE_INSTALLED;

    mutable std::mutex mutex_;  // guards what follows
    std::shared_ptr<BundleContextPrivate> context_;
    std::vector<std::shared_ptr<Component>> components_;
};

}  // namespace cppmicroservices::detail
