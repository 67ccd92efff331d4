#pragma once

#include "settings/core/Settings.hpp"

#include <memory>

namespace settings {

/// The settings in the JSON file that the environment names, or in the user's own; empty settings when the
/// user has none. Throws core::SettingsError, also for a file of more than 4 MiB.
std::shared_ptr<core::Settings> readSettingsFile();

}  // namespace settings
