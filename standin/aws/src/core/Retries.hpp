#pragma once

#include <aws/core/client/RetryStrategy.h>

#include <chrono>
#include <functional>

#include "core/Exchange.hpp"

namespace standin::aws {

/// What an answer told that makes another attempt worthwhile, at once.
enum class Correction {
    None,
    Time,   ///< if the strategy agrees
    Region  ///< whatever the strategy says
};

/// What came of one attempt.
struct Attempt {
    ExchangeOutcome outcome;
    Correction correction = Correction::None;
};

using Sleeper = std::function<void(std::chrono::milliseconds)>;

/// Makes attempts until one succeeds or the strategy gives up; the last one's outcome. `attempt` is told the
/// number of attempts before. A corrected attempt is repeated without delay.
ExchangeOutcome retry(Aws::Client::RetryStrategy& strategy, const Sleeper& sleep,
                      const std::function<Attempt(long retries)>& attempt);

}  // namespace standin::aws
