#pragma once

#include <aws/core/client/RetryStrategy.h>

#include <memory>
#include <string>

namespace standin::aws {

/// The attempts that `AWS_MAX_ATTEMPTS` or `max_attempts` ask for, the first one included: a number at the
/// text's beginning; 3 for anything else. Zero is one attempt, too.
long attemptsFrom(const std::string& text);

/// "standard", "adaptive"; every other mode is the default one, which has its own number of attempts.
std::shared_ptr<Aws::Client::RetryStrategy> retryStrategyFrom(const std::string& mode, long attempts);

}  // namespace standin::aws
