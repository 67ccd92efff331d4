#include "bundle/InstalledBundle.hpp"

#include "cppmicroservices/IllegalStateException.h"
#include "cppmicroservices/SharedLibraryException.h"
#include "framework/FrameworkCore.hpp"

#include <stdexcept>
#include <system_error>
#include <utility>

namespace cppmicroservices::detail {

using Components = std::vector<std::shared_ptr<Component>>;

InstalledBundle::InstalledBundle(std::weak_ptr<FrameworkCore> core, long id, std::string location,
                                 Manifest manifest)
    : core_(std::move(core)),
      id_(id),
      location_(std::move(location)),
      file_(std::filesystem::absolute(location_)),
      manifest_(std::move(manifest)) {}

InstalledBundle::~InstalledBundle() {
    stop();
}

bool InstalledBundle::isRunning() const {
    return (state_ & (Bundle::STATE_STARTING | Bundle::STATE_ACTIVE | Bundle::STATE_STOPPING)) != 0;
}

std::shared_ptr<BundleContextPrivate> InstalledBundle::context() {
    const std::lock_guard lock(mutex_);
    if (!context_) context_ = std::make_shared<BundleContextPrivate>(core_, weak_from_this(), id_);
    return context_;
}

Components InstalledBundle::components() const {
    const std::lock_guard lock(mutex_);
    return components_;
}

void InstalledBundle::start() {
    const std::lock_guard turn(turn_);
    if (state_ == Bundle::STATE_ACTIVE) return;
    if (state_ == Bundle::STATE_UNINSTALLED)
        throw std::logic_error("bundle " + manifest_.symbolicName + " is uninstalled");
    const auto core = core_.lock();
    if (!core || !core->acceptsStarts()) throw IllegalStateException("the framework isn't started");

    const Bundle::State before = state_.exchange(Bundle::STATE_STARTING);
    try {
        const SharedLibrary library = load();
        adopt(makeComponents(library, *core));
    } catch (...) {
        state_ = before;
        throw;
    }
    state_ = Bundle::STATE_ACTIVE;
    for (const auto& component : components())
        Component::enable(component);
}

void InstalledBundle::stop() {
    const std::lock_guard turn(turn_);
    stopTakingTurn();
}

void InstalledBundle::uninstall() {
    {
        const std::lock_guard turn(turn_);
        if (state_ == Bundle::STATE_UNINSTALLED)
            throw std::logic_error("bundle " + manifest_.symbolicName + " is uninstalled");
        stopTakingTurn();
        state_ = Bundle::STATE_UNINSTALLED;
    }
    if (const auto core = core_.lock()) core->forget(*this);
}

void InstalledBundle::stopTakingTurn() {
    if (state_ != Bundle::STATE_ACTIVE) return;
    state_ = Bundle::STATE_STOPPING;
    for (const auto& component : components())
        component->disable();
    adopt({});
    withdrawServices();
    state_ = Bundle::STATE_RESOLVED;
    withdrawServices();  // what was registered meanwhile
}

void InstalledBundle::withdrawServices() {
    if (const auto core = core_.lock()) core->registry()->removeAllOf(id_);
}

SharedLibrary InstalledBundle::load() {
    try {
        return SharedLibrary(file_);
    } catch (const std::runtime_error& error) {
        throw SharedLibraryException(std::make_error_code(std::errc::executable_format_error), error.what(),
                                     Bundle(shared_from_this()));
    }
}

Components InstalledBundle::makeComponents(const SharedLibrary& library, FrameworkCore& core) {
    const auto setContext = library.function<void(BundleContextPrivate*)>("_us_set_bundle_context_instance_" +
                                                                          manifest_.symbolicName);
    Components components;
    for (const ComponentDescription& description : manifest_.components)
        components.push_back(
            std::make_shared<Component>(description, library,
                                        ComponentHome{core.nextComponentId(), id_, BundleContext(context()),
                                                      core.registry(), core.log()}));
    setContext(context().get());
    return components;
}

void InstalledBundle::adopt(Components components) {
    const std::lock_guard lock(mutex_);
    std::swap(components_, components);
}

}  // namespace cppmicroservices::detail
