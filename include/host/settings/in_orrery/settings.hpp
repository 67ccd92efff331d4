#pragma once

#include "contextmgr/ContextRegistry.hpp"
#include "settings/core/Settings.hpp"

#include <memory>

namespace settings::in_orrery {

/// The root of the settings, never null. Any thread, while no other changes the environment.
///
/// By default it is the JSON file that the environment variable S3VFS_SETTINGS names, else
/// `s3vfs/settings.json` in the user's configuration folder: XDG_CONFIG_HOME, else `~/.config`. The file is
/// read by each call. Throws core::SettingsError when it can't be read or understood, or when the file that
/// S3VFS_SETTINGS names doesn't exist; without a file in the configuration folder the settings are empty.
std::shared_ptr<core::Settings> getSettingsRoot(const contextmgr::KvrID& context);

/// Puts other settings in place of the default for all that ask from now on; null brings the default back.
/// Any thread.
void useSettingsRoot(std::shared_ptr<core::Settings> root);

}  // namespace settings::in_orrery
