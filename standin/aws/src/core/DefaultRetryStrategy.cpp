#include <aws/core/client/DefaultRetryStrategy.h>

#include <cstdint>

namespace Aws::Client {

bool DefaultRetryStrategy::ShouldRetry(const AWSError<CoreErrors>& error, long attemptedRetries) const {
    return attemptedRetries < maxRetries_ && error.ShouldRetry();
}

long DefaultRetryStrategy::CalculateDelayBeforeNextRetry(const AWSError<CoreErrors>& /*error*/,
                                                         long attemptedRetries) const {
    if (attemptedRetries <= 0) return 0;
    // Unsigned, the doubling wraps instead of being undefined.
    constexpr unsigned long bits = 64;
    const auto count = static_cast<unsigned long>(attemptedRetries);
    return static_cast<long>((std::uint64_t{1} << count % bits) * static_cast<std::uint64_t>(scaleFactor_));
}

}  // namespace Aws::Client
