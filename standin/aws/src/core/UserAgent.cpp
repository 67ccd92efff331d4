#include <aws/core/client/ClientConfiguration.h>
#include <sys/utsname.h>

#include <algorithm>

#include "core/EnvironmentVariable.hpp"
#include "core/Settings.hpp"

namespace standin::aws {
namespace {

std::string compiler() {
#if defined(__clang__)
    return "Clang#" + std::to_string(__clang_major__) + '.' + std::to_string(__clang_minor__) + '.' +
           std::to_string(__clang_patchlevel__);
#else
    return "GCC#" + std::to_string(__GNUC__) + '.' + std::to_string(__GNUC_MINOR__) + '.' +
           std::to_string(__GNUC_PATCHLEVEL__);
#endif
}

bool endsWord(char c) {
    return static_cast<unsigned char>(c) <= ' ' || c == 0x7f;
}

/// Nothing for an empty value.
std::string word(const char* label, std::string value) {
    if (value.empty()) return {};
    std::replace_if(value.begin(), value.end(), endsWord, '_');
    return label + value;
}

}  // namespace
}  // namespace standin::aws

namespace Aws::Client {

using namespace standin::aws;

Aws::String ComputeUserAgentString(const ClientConfiguration* configuration) {
    utsname system{};
    uname(&system);
    const char* const retryMode =
        configuration != nullptr ? configuration->retryStrategy->GetStrategyName() : "default";
    return std::string("aws-sdk-cpp/1.11.274 ua/2.0 md/aws-crt#0.26.2 os/") + system.sysname + '/' +
           system.release + " md/arch#" + system.machine + " lang/c++#C++11 md/" + compiler() +
           " cfg/retry-mode#" + retryMode + word(" exec-env/", environmentVariable("AWS_EXECUTION_ENV")) +
           word(" app/", setting("AWS_SDK_UA_APP_ID", "sdk_ua_app_id"));
}

}  // namespace Aws::Client
