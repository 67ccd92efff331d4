#include <aws/core/auth/AWSCredentialsProvider.h>
#include <pwd.h>
#include <unistd.h>

#include <vector>

#include "core/EnvironmentVariable.hpp"

namespace Aws::Auth {
namespace {

using standin::aws::environmentVariable;

/// Of the user who runs the process, by the user database; empty when it doesn't know.
std::string homeOfUser() {
    passwd user{};
    passwd* found = nullptr;
    std::vector<char> buffer(16384);
    getpwuid_r(getuid(), &user, buffer.data(), buffer.size(), &found);
    return found != nullptr ? user.pw_dir : "";
}

/// Without the slash at its end.
std::string homeFolder() {
    std::string home = environmentVariable("HOME");
    if (home.empty()) home = homeOfUser();
    if (!home.empty() && home.back() == '/') home.pop_back();
    return home;
}

std::string fileName(const char* variable, const char* nameInHome) {
    const std::string named = environmentVariable(variable);
    return !named.empty() ? named : homeFolder() + "/.aws/" + nameInHome;
}

}  // namespace

Aws::String GetConfigProfileFilename() {
    return fileName("AWS_CONFIG_FILE", "config");
}

Aws::String GetConfigProfileName() {
    for (const char* const variable : {"AWS_DEFAULT_PROFILE", "AWS_PROFILE"}) {
        std::string name = environmentVariable(variable);
        if (!name.empty()) return name;
    }
    return "default";
}

Aws::String ProfileConfigFileAWSCredentialsProvider::GetCredentialsProfileFilename() {
    return fileName("AWS_SHARED_CREDENTIALS_FILE", "credentials");
}

Aws::String ProfileConfigFileAWSCredentialsProvider::GetProfileDirectory() {
    const std::string file = GetCredentialsProfileFilename();
    const auto slash = file.rfind('/');
    return slash != std::string::npos ? file.substr(0, slash) : "";
}

}  // namespace Aws::Auth
