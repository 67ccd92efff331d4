#include <aws/core/Aws.h>

#include <list>
#include <mutex>

#include "core/CurlGlobal.hpp"

namespace Aws {
namespace {

/// One entry for every InitAPI() without its ShutdownAPI().
struct ApiUses {
    std::mutex mutex;
    std::list<standin::aws::CurlGlobal> uses;
};

// Left alone at exit: libraries that end late may still call ShutdownAPI().
ApiUses& apiUses() {
    static auto* const uses = new ApiUses;
    return *uses;
}

}  // namespace

void InitAPI(const SDKOptions& /*options*/) {
    const std::lock_guard lock(apiUses().mutex);
    apiUses().uses.emplace_back();
}

void ShutdownAPI(const SDKOptions& /*options*/) {
    const std::lock_guard lock(apiUses().mutex);
    if (!apiUses().uses.empty()) apiUses().uses.pop_back();
}

}  // namespace Aws
