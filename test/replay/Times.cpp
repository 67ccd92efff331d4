#include "replay/Times.hpp"

#include <algorithm>

namespace replay {
namespace {

constexpr const char* field = "elapsed_ms_about";

constexpr long factor = 5;
constexpr long nothingWaitedMs = 1000;

bool fits(long seenMs, long expectedMs) {
    return seenMs >= expectedMs / 2 && seenMs <= factor * std::max(expectedMs, nothingWaitedMs);
}

}  // namespace

void addElapsed(Json& described, std::chrono::steady_clock::time_point start) {
    const auto elapsed = std::chrono::steady_clock::now() - start;
    described[field] = std::chrono::duration_cast<std::chrono::milliseconds>(elapsed).count();
}

Json withFittingTimes(Json seen, const Json& expected) {
    const Json leaves = seen.flatten();
    for (const auto& [path, ms] : leaves.items()) {
        const Json::json_pointer place(path);
        if (place.empty() || place.back() != field) continue;
        const Json recorded = expected.contains(place) ? expected[place] : Json();
        if (!fits(ms, recorded.is_null() ? 0 : recorded.get<long>())) continue;
        if (recorded.is_null())
            seen[place.parent_pointer()].erase(field);
        else
            seen[place] = recorded;
    }
    return seen;
}

}  // namespace replay
