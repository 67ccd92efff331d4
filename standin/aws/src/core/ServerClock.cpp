#include "core/ServerClock.hpp"

namespace standin::aws {
namespace {

using Aws::Utils::DateFormat;
using Aws::Utils::DateTime;

constexpr std::chrono::milliseconds tolerated = std::chrono::minutes(4);

}  // namespace

std::optional<DateTime> serverTime(const Headers& answer) {
    auto header = answer.find("date");
    if (header == answer.end()) header = answer.find("x-amz-date");
    if (header == answer.end()) return std::nullopt;
    const DateTime time(header->second, DateFormat::AutoDetect);
    return time.WasParseSuccessful() ? std::optional(time) : std::nullopt;
}

DateTime ServerClock::now() const {
    return DateTime::Now() + correction_.load();
}

bool ServerClock::adjustTo(const DateTime& serverTime) {
    const auto away = DateTime::Diff(serverTime, now());
    if (std::chrono::abs(away) < tolerated) return false;
    correction_ = DateTime::Diff(serverTime, DateTime::Now());
    return true;
}

}  // namespace standin::aws
