#pragma once

#include <aws/core/client/RetryStrategy.h>

#include <chrono>
#include <functional>

#include "core/Exchange.hpp"

namespace standin::aws {

/// What came of one attempt.
struct Attempt {
    ExchangeOutcome outcome;
    /// The answer told something (the time, the region) that makes another attempt worthwhile by itself.
    bool corrected = false;
};

using Sleeper = std::function<void(std::chrono::milliseconds)>;

/// Makes attempts until one succeeds or the strategy gives up; the last one's outcome. `attempt` is told the
/// number of attempts before. A corrected attempt counts as retryable and is repeated without delay.
ExchangeOutcome retry(Aws::Client::RetryStrategy& strategy, const Sleeper& sleep,
                      const std::function<Attempt(long retries)>& attempt);

}  // namespace standin::aws
