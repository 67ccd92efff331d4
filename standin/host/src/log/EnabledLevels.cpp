#include "log/EnabledLevels.hpp"

#include "foundation/log/diagnostic_logger.hpp"

#include <map>
#include <mutex>

namespace foundation::log {

namespace {

struct Registry {
    std::mutex mutex;  // guards the map, not the masks in it
    std::map<std::string, std::atomic<unsigned>> masks;
};

// Never destroyed: loggers of static lifetime may outlive any object made here.
Registry& registry() {
    static auto* const instance = new Registry;
    return *instance;
}

}  // namespace

std::atomic<unsigned>& enabledLevelsOf(const std::string& channel) {
    const std::lock_guard lock(registry().mutex);
    return registry().masks.try_emplace(channel, 0U).first->second;
}

void setEnabledLevels(const std::string& channel, unsigned mask) {
    enabledLevelsOf(channel).store(mask, std::memory_order_relaxed);
}

unsigned enabledLevels(const std::string& channel) {
    return enabledLevelsOf(channel).load(std::memory_order_relaxed);
}

}  // namespace foundation::log
