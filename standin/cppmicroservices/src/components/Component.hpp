#pragma once

#include "components/ActiveComponent.hpp"
#include "components/ComponentDescription.hpp"
#include "components/InstanceFunctions.hpp"
#include "services/ServiceRegistry.hpp"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace cppmicroservices::detail {

/// A component of a started bundle: active while all of its references are there.
///
/// Services come and go on any thread. One thread at a time makes the component fit them; a change that comes
/// meanwhile is left to that thread, so that no code of a component ever runs under a lock and no two of its
/// instances exist at once.
class Component final : public ServiceListener {
public:
    Component(ComponentDescription description, const SharedLibrary& library, ComponentHome home);
    ~Component() override;

    /// Activates it when it can be, and listens from now on.
    static void enable(const std::shared_ptr<Component>& component);

    /// Deactivates it for good. When it returns, no code of the component runs, unless it is called by that.
    void disable();

    const ComponentDescription& description() const { return description_; }
    unsigned long id() const { return home_.componentId; }
    ServiceProperties properties() const;

    /// What each reference is bound to, in their order; nothing unless it is active.
    std::optional<std::vector<BoundService>> bound() const;

    /// What each reference would be bound to at this moment; null where there is no service.
    std::vector<BoundService> candidates() const;

private:
    // Without memory to find out what there is to be done, it ends the process.
    void serviceChanged(const RegisteredService& service) noexcept override;
    void settle();
    void fit();
    void activate();
    void replaceActive(std::unique_ptr<ActiveComponent> active);
    bool isEnabled() const;

    const ComponentDescription description_;
    const InstanceFunctions functions_;
    const ComponentHome home_;

    mutable std::mutex mutex_;  // guards what follows
    std::condition_variable idle_;
    bool enabled_ = true;
    bool changed_ = false;                     // something, since the busy thread last looked
    std::thread::id busy_;                     // the thread that makes it fit, if any
    std::unique_ptr<ActiveComponent> active_;  // written by the busy thread only, which may read it unguarded
};

}  // namespace cppmicroservices::detail
