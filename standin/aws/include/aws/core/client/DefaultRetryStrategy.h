#pragma once

#include <aws/core/client/RetryStrategy.h>

namespace Aws::Client {

/// Retries what is retryable, at once and then after delays that double.
class DefaultRetryStrategy : public RetryStrategy {
public:
    static constexpr long defaultMaxRetries = 10;
    static constexpr long defaultScaleFactor = 25;

    /// `scaleFactor` in milliseconds: the second retry waits twice that long, each later one twice its
    /// predecessor's.
    explicit DefaultRetryStrategy(long maxRetries = defaultMaxRetries, long scaleFactor = defaultScaleFactor)
        : maxRetries_(maxRetries), scaleFactor_(scaleFactor) {}

    bool ShouldRetry(const AWSError<CoreErrors>& error, long attemptedRetries) const override;
    long CalculateDelayBeforeNextRetry(const AWSError<CoreErrors>& error,
                                       long attemptedRetries) const override;
    long GetMaxAttempts() const override { return maxRetries_ + 1; }
    const char* GetStrategyName() const override { return "default"; }

private:
    long maxRetries_;
    long scaleFactor_;
};

}  // namespace Aws::Client
