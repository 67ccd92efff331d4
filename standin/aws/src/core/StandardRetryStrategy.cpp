#include <aws/core/client/RetryStrategy.h>

#include <algorithm>
#include <random>

namespace Aws::Client {
namespace {

constexpr int wholeQuota = 500;
constexpr int retryCost = 5;
constexpr int timeoutRetryCost = 10;
constexpr int successReward = 1;

constexpr double baseDelayMs = 1000;
constexpr double longestDelayMs = 20000;
constexpr long mostDoublings = 20;

int costOf(const AWSError<CoreErrors>& error) {
    return error.GetErrorType() == CoreErrors::REQUEST_TIMEOUT ? timeoutRetryCost : retryCost;
}

/// At least 0, below 1.
double randomFraction() {
    static thread_local std::minstd_rand random{std::random_device{}()};
    return std::uniform_real_distribution<>()(random);
}

}  // namespace

StandardRetryStrategy::StandardRetryStrategy(long maxAttempts)
    : maxAttempts_(maxAttempts), quota_(wholeQuota) {}

bool StandardRetryStrategy::ShouldRetry(const AWSError<CoreErrors>& error, long attemptedRetries) const {
    return error.ShouldRetry() && attemptedRetries + 1 < maxAttempts_ && takeQuota(costOf(error));
}

long StandardRetryStrategy::CalculateDelayBeforeNextRetry(const AWSError<CoreErrors>& /*error*/,
                                                          long attemptedRetries) const {
    const auto doublings = static_cast<unsigned>(std::clamp(attemptedRetries, 0L, mostDoublings));
    return static_cast<long>(
        std::min(longestDelayMs, randomFraction() * baseDelayMs * static_cast<double>(1UL << doublings)));
}

void StandardRetryStrategy::RequestBookkeeping(const HttpResponseOutcome& outcome) {
    if (outcome.IsSuccess()) returnQuota(successReward);
}

void StandardRetryStrategy::RequestBookkeeping(const HttpResponseOutcome& outcome,
                                               const AWSError<CoreErrors>& lastError) {
    if (outcome.IsSuccess()) returnQuota(costOf(lastError));
}

bool StandardRetryStrategy::takeQuota(int amount) const {
    const std::lock_guard lock(mutex_);
    if (quota_ < amount) return false;
    quota_ -= amount;
    return true;
}

void StandardRetryStrategy::returnQuota(int amount) const {
    const std::lock_guard lock(mutex_);
    quota_ = std::min(wholeQuota, quota_ + amount);
}

}  // namespace Aws::Client
