#include "settings/in_orrery/settings.hpp"

#include "settings/SettingsFile.hpp"

#include <mutex>
#include <utility>

namespace settings::in_orrery {

namespace {

std::mutex mutex;
std::shared_ptr<core::Settings> replacement;  // null: the default; guarded by mutex

std::shared_ptr<core::Settings> currentReplacement() {
    const std::lock_guard lock(mutex);
    return replacement;
}

}  // namespace

std::shared_ptr<core::Settings> getSettingsRoot(const contextmgr::KvrID&) {
    const auto root = currentReplacement();
    return root ? root : readSettingsFile();
}

void useSettingsRoot(std::shared_ptr<core::Settings> root) {
    const std::lock_guard lock(mutex);
    replacement = std::move(root);
}

}  // namespace settings::in_orrery
