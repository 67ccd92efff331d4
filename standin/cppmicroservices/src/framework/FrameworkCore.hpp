#pragma once

#include "bundle/InstalledBundle.hpp"
#include "cppmicroservices/Bundle.h"
#include "framework/FailureLog.hpp"
#include "services/ServiceRegistry.hpp"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <ostream>
#include <string>
#include <vector>

namespace cppmicroservices::detail {

/// A framework's bundles and services. Any thread may call any operation.
class FrameworkCore : public std::enable_shared_from_this<FrameworkCore> {
public:
    explicit FrameworkCore(std::ostream& log);
    FrameworkCore(const FrameworkCore&) = delete;
    FrameworkCore& operator=(const FrameworkCore&) = delete;
    ~FrameworkCore();

    const std::shared_ptr<ServiceRegistry>& registry() const { return registry_; }
    const std::shared_ptr<FailureLog>& log() const { return log_; }
    unsigned long nextComponentId() { return ++lastComponentId_; }

    Bundle::State state() const;

    /// Whether contexts are valid: from init() until everything has been stopped.
    bool isRunning() const;

    /// Whether bundles may start: isRunning(), and it isn't being stopped.
    bool acceptsStarts() const;

    void init();
    void start();
    void stop();

    /// Waits until it is stopped; zero is forever. Whether it is.
    bool waitForStop(std::chrono::milliseconds timeout) const;

    /// The bundle in a file, installed unless it is already. Throws std::runtime_error when there is none in
    /// it, or when another file's has its name and version.
    std::shared_ptr<InstalledBundle> install(const std::string& location);

    std::vector<std::shared_ptr<InstalledBundle>> bundles() const;

    /// Takes an uninstalled bundle off the list.
    void forget(const InstalledBundle& bundle);

private:
    std::shared_ptr<InstalledBundle> add(const std::string& location, Manifest manifest);
    void become(Bundle::State state);

    const std::shared_ptr<ServiceRegistry> registry_ = std::make_shared<ServiceRegistry>();
    const std::shared_ptr<FailureLog> log_;
    std::atomic<unsigned long> lastComponentId_ = 0;

    std::mutex turn_;  // held while it is started or stopped

    mutable std::mutex mutex_;  // guards what follows
    mutable std::condition_variable stateChanged_;
    Bundle::State state_ = Bundle::STATE_INSTALLED;
    long lastBundleId_ = 0;
    std::vector<std::shared_ptr<InstalledBundle>> bundles_;  // in the order of installation
};

}  // namespace cppmicroservices::detail
