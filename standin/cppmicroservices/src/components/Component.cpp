#include "components/Component.hpp"

#include "cppmicroservices/servicecomponent/ComponentConstants.hpp"

#include <algorithm>
#include <utility>

namespace cppmicroservices::detail {

using namespace service::component;

Component::Component(ComponentDescription description, const SharedLibrary& library, ComponentHome home)
    : description_(std::move(description)),
      functions_(library, description_.implementationClass),
      home_(std::move(home)) {}

Component::~Component() {
    disable();
}

void Component::enable(const std::shared_ptr<Component>& component) {
    component->home_.registry->listen(component);
    component->settle();
}

void Component::disable() {
    {
        const std::lock_guard lock(mutex_);
        enabled_ = false;
    }
    settle();
    std::unique_lock lock(mutex_);
    idle_.wait(lock, [this] { return busy_ == std::thread::id() || busy_ == std::this_thread::get_id(); });
}

ServiceProperties Component::properties() const {
    ServiceProperties properties = description_.properties;
    properties[ComponentConstants::COMPONENT_NAME] = description_.name;
    properties[ComponentConstants::COMPONENT_ID] = home_.componentId;
    return properties;
}

std::optional<std::vector<BoundService>> Component::bound() const {
    const std::lock_guard lock(mutex_);
    if (!active_) return std::nullopt;
    return active_->context().services();
}

std::vector<BoundService> Component::candidates() const {
    std::vector<BoundService> candidates;
    for (const ReferenceDescription& reference : description_.references) {
        const auto found = home_.registry->find(reference.interfaceName, reference.target);
        if (found.empty())
            candidates.emplace_back();
        else
            candidates.push_back({found.front(), found.front()->object(reference.interfaceName)});
    }
    return candidates;
}

void Component::serviceChanged(const RegisteredService& service) noexcept {
    const auto isReferred = [&service](const auto& reference) {
        return service.provides(reference.interfaceName);
    };
    if (std::any_of(description_.references.begin(), description_.references.end(), isReferred)) settle();
}

void Component::settle() {
    std::unique_lock lock(mutex_);
    changed_ = true;
    if (busy_ != std::thread::id()) return;
    busy_ = std::this_thread::get_id();
    while (std::exchange(changed_, false)) {
        lock.unlock();
        fit();
        lock.lock();
    }
    busy_ = std::thread::id();
    idle_.notify_all();
}

void Component::fit() {
    const bool enabled = isEnabled();
    if (active_ && !(enabled && active_->context().isBound())) replaceActive(nullptr);
    if (active_ || !enabled) return;
    try {
        activate();
    } catch (...) {
        home_.log->report(description_.name, "can't be activated");
    }
}

void Component::activate() {
    auto services = candidates();
    // A service may have gone since it was found.
    const auto isMissing = [](const BoundService& bound) { return !bound.object; };
    if (std::any_of(services.begin(), services.end(), isMissing)) return;
    auto context =
        std::make_shared<BoundContext>(description_, properties(), home_.bundle, std::move(services));
    replaceActive(std::make_unique<ActiveComponent>(description_, functions_, home_, std::move(context)));
}

void Component::replaceActive(std::unique_ptr<ActiveComponent> active) {
    const std::unique_lock lock(mutex_);
    std::swap(active_, active);
    // The former one goes after the lock.
}

bool Component::isEnabled() const {
    const std::lock_guard lock(mutex_);
    return enabled_;
}

}  // namespace cppmicroservices::detail
