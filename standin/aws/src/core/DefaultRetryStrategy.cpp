#include <aws/core/client/DefaultRetryStrategy.h>

#include <algorithm>

namespace Aws::Client {

bool DefaultRetryStrategy::ShouldRetry(const AWSError<CoreErrors>& error, long attemptedRetries) const {
    return attemptedRetries < maxRetries_ && error.ShouldRetry();
}

long DefaultRetryStrategy::CalculateDelayBeforeNextRetry(const AWSError<CoreErrors>& /*error*/,
                                                         long attemptedRetries) const {
    if (attemptedRetries <= 0) return 0;
    constexpr long longestShift = 30;  // keeps any sensible scale factor within 64 bits
    return (1L << std::min(attemptedRetries, longestShift)) * scaleFactor_;
}

}  // namespace Aws::Client
