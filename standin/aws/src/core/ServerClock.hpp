#pragma once

#include <aws/core/utils/DateTime.h>

#include <atomic>
#include <chrono>
#include <optional>

#include "core/SignatureV4.hpp"

namespace standin::aws {

/// The service's time as an answer tells it in `date`, else in `x-amz-date`. Nothing when it doesn't read.
std::optional<Aws::Utils::DateTime> serverTime(const Headers& answer);

/// This machine's clock, corrected by what the service's was seen to be. Thread-safe.
class ServerClock {
public:
    Aws::Utils::DateTime now() const;

    /// Corrects the clock when it is four minutes or more away; true when it was.
    bool adjustTo(const Aws::Utils::DateTime& serverTime);

private:
    std::atomic<std::chrono::milliseconds> correction_{std::chrono::milliseconds(0)};
};

}  // namespace standin::aws
