#include "core/RetryMode.hpp"

#include <aws/core/client/AdaptiveRetryStrategy.h>
#include <aws/core/client/DefaultRetryStrategy.h>

#include <charconv>

#include "core/Text.hpp"

namespace standin::aws {

using namespace Aws::Client;

long attemptsFrom(const std::string& text) {
    const std::string_view number = trimmed(text);
    int attempts = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), attempts);
    return error == std::errc() && attempts >= 0 ? attempts : StandardRetryStrategy::defaultMaxAttempts;
}

std::shared_ptr<RetryStrategy> retryStrategyFrom(const std::string& mode, long attempts) {
    if (mode == "standard") return std::make_shared<StandardRetryStrategy>(attempts);
    if (mode == "adaptive") return std::make_shared<AdaptiveRetryStrategy>(attempts);
    return std::make_shared<DefaultRetryStrategy>();
}

}  // namespace standin::aws
