#pragma once

#include <string>

namespace standin::aws {

/// A setting of the config file's profile, as InitAPI() read the file; empty when not set, and before
/// InitAPI().
std::string profileSetting(const std::string& profile, const std::string& name);

/// The variable's value, else the profile's setting; the profile by Aws::Auth::GetConfigProfileName(). Empty
/// when neither is set. Reads the environment.
std::string setting(const char* variable, const std::string& name);

}  // namespace standin::aws
