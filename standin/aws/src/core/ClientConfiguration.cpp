#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/client/ClientConfiguration.h>

#include "core/EnvironmentVariable.hpp"
#include "core/ProcessState.hpp"
#include "core/RetryMode.hpp"
#include "core/Settings.hpp"
#include "core/Text.hpp"

namespace Aws::Client {
namespace {

using namespace standin::aws;

std::string regionOfMachine() {
    if (lowerCase(environmentVariable("AWS_EC2_METADATA_DISABLED")) == "true") return {};
    const auto state = processState();
    return state ? state->metadata.region() : std::string();
}

std::string configuredRegion(const std::string& profile) {
    for (const char* const variable : {"AWS_DEFAULT_REGION", "AWS_REGION"}) {
        std::string region = environmentVariable(variable);
        if (!region.empty()) return region;
    }
    return profileSetting(profile, "region");
}

}  // namespace

ClientConfiguration::ClientConfiguration() : ClientConfiguration(Aws::Auth::GetConfigProfileName().c_str()) {}

ClientConfiguration::ClientConfiguration(const char* profile, bool shouldDisableIMDS)
    : region(configuredRegion(profile)),
      profileName(profile),
      retryStrategy(retryStrategyFrom(setting("AWS_RETRY_MODE", "retry_mode"),
                                      attemptsFrom(setting("AWS_MAX_ATTEMPTS", "max_attempts")))),
      disableIMDS(shouldDisableIMDS) {
    if (region.empty() && !disableIMDS) region = regionOfMachine();
    if (region.empty()) region = "us-east-1";
}

}  // namespace Aws::Client
