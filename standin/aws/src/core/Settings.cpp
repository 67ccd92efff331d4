#include "core/Settings.hpp"

#include <aws/core/auth/AWSCredentialsProvider.h>

#include "core/EnvironmentVariable.hpp"
#include "core/ProcessState.hpp"

namespace standin::aws {

std::string profileSetting(const std::string& profile, const std::string& name) {
    const auto state = processState();
    if (!state) return {};
    const auto found = state->configProfiles.find(profile);
    return found != state->configProfiles.end() ? found->second.GetValue(name) : std::string();
}

std::string setting(const char* variable, const std::string& name) {
    std::string value = environmentVariable(variable);
    return !value.empty() ? value : profileSetting(Aws::Auth::GetConfigProfileName(), name);
}

}  // namespace standin::aws
