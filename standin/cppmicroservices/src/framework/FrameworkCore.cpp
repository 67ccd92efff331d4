#include "framework/FrameworkCore.hpp"

#include "bundle/BundleFile.hpp"
#include "bundle/Manifest.hpp"
#include "components/ComponentRuntime.hpp"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace cppmicroservices::detail {

namespace {

using service::component::runtime::ServiceComponentRuntime;

constexpr const char* resourceSection = ".us_resources";

Manifest manifestOf(const std::string& location) {
    try {
        return readManifest(readElfSection(location, resourceSection));
    } catch (const std::runtime_error& error) {
        throw std::runtime_error("can't install the bundle " + location + ": " + error.what());
    }
}

}  // namespace

FrameworkCore::FrameworkCore(std::ostream& log) : log_(std::make_shared<FailureLog>(log)) {}

FrameworkCore::~FrameworkCore() {
    stop();
}

Bundle::State FrameworkCore::state() const {
    const std::lock_guard lock(mutex_);
    return state_;
}

bool FrameworkCore::isRunning() const {
    return (state() & (Bundle::STATE_STARTING | Bundle::STATE_ACTIVE | Bundle::STATE_STOPPING)) != 0;
}

bool FrameworkCore::acceptsStarts() const {
    return (state() & (Bundle::STATE_STARTING | Bundle::STATE_ACTIVE)) != 0;
}

void FrameworkCore::init() {
    const std::lock_guard turn(turn_);
    if (!isRunning()) become(Bundle::STATE_STARTING);
}

void FrameworkCore::start() {
    init();
    const std::lock_guard turn(turn_);
    if (state() != Bundle::STATE_STARTING) return;
    const std::shared_ptr<ServiceComponentRuntime> runtime =
        std::make_shared<ComponentRuntime>(weak_from_this());
    registry_->add(0, MakeInterfaceMap<ServiceComponentRuntime>(runtime), {});
    become(Bundle::STATE_ACTIVE);
}

void FrameworkCore::stop() {
    const std::lock_guard turn(turn_);
    if (!isRunning()) return;
    become(Bundle::STATE_STOPPING);
    const auto all = bundles();
    std::for_each(all.rbegin(), all.rend(), [](const auto& bundle) { bundle->stop(); });
    registry_->removeAllOf(0);
    become(Bundle::STATE_RESOLVED);
    registry_->removeAllOf(0);  // what was registered meanwhile
}

bool FrameworkCore::waitForStop(std::chrono::milliseconds timeout) const {
    std::unique_lock lock(mutex_);
    const auto isStopped = [this] {
        return state_ == Bundle::STATE_INSTALLED || state_ == Bundle::STATE_RESOLVED;
    };
    if (timeout.count() > 0) return stateChanged_.wait_for(lock, timeout, isStopped);
    stateChanged_.wait(lock, isStopped);
    return true;
}

std::shared_ptr<InstalledBundle> FrameworkCore::install(const std::string& location) {
    for (const auto& bundle : bundles())
        if (bundle->location() == location) return bundle;
    // Read without the lock, which every use of a context takes: the file may be a slow one.
    return add(location, manifestOf(location));
}

std::shared_ptr<InstalledBundle> FrameworkCore::add(const std::string& location, Manifest manifest) {
    const std::lock_guard lock(mutex_);
    for (const auto& bundle : bundles_) {
        if (bundle->location() == location) return bundle;  // another thread was faster
        if (bundle->manifest().symbolicName == manifest.symbolicName &&
            bundle->manifest().version == manifest.version)
            throw std::runtime_error("can't install the bundle " + location + ": " + manifest.symbolicName +
                                     " " + manifest.version + " is installed from " + bundle->location());
    }
    bundles_.push_back(
        std::make_shared<InstalledBundle>(weak_from_this(), ++lastBundleId_, location, std::move(manifest)));
    return bundles_.back();
}

std::vector<std::shared_ptr<InstalledBundle>> FrameworkCore::bundles() const {
    const std::lock_guard lock(mutex_);
    return bundles_;
}

void FrameworkCore::forget(const InstalledBundle& bundle) {
    const std::lock_guard lock(mutex_);
    const auto isIt = [&bundle](const auto& each) { return each.get() == &bundle; };
    bundles_.erase(std::remove_if(bundles_.begin(), bundles_.end(), isIt), bundles_.end());
}

void FrameworkCore::become(Bundle::State state) {
    const std::lock_guard lock(mutex_);
    state_ = state;
    stateChanged_.notify_all();
}

}  // namespace cppmicroservices::detail
