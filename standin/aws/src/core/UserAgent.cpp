#include "core/UserAgent.hpp"

#include <sys/utsname.h>

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

}  // namespace

std::string userAgent(const std::string& retryStrategyName, const std::string& serviceId) {
    utsname system{};
    uname(&system);
    return std::string("aws-sdk-cpp/1.11.274 ua/2.0 md/aws-crt#0.26.2 os/") + system.sysname + '/' +
           system.release + " md/arch#" + system.machine + " lang/c++#C++11 md/" + compiler() +
           " cfg/retry-mode#" + retryStrategyName + " api/" + serviceId;
}

}  // namespace standin::aws
