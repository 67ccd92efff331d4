#include "core/Retries.hpp"

#include <memory>
#include <optional>
#include <utility>

namespace standin::aws {
namespace {

bool shouldRetry(const Aws::Client::RetryStrategy& strategy, const Attempt& attempt, long retries) {
    return attempt.correction == Correction::Region ||
           strategy.ShouldRetry(attempt.outcome.GetError(), retries);
}

Aws::Client::HttpResponseOutcome headOf(const ExchangeOutcome& outcome) {
    if (!outcome.IsSuccess()) return outcome.GetError();
    const ExchangeReply& reply = outcome.GetResult();
    return std::make_shared<Aws::Http::HttpResponse>(static_cast<Aws::Http::HttpResponseCode>(reply.status),
                                                     reply.headers);
}

}  // namespace

ExchangeOutcome retry(Aws::Client::RetryStrategy& strategy, const Sleeper& sleep,
                      const std::function<Attempt(long retries)>& attempt) {
    std::optional<ExchangeError> lastError;
    for (long retries = 0;; ++retries) {
        Attempt made = attempt(retries);
        const auto head = headOf(made.outcome);
        lastError ? strategy.RequestBookkeeping(head, *lastError) : strategy.RequestBookkeeping(head);
        made.outcome.SetRetryCount(static_cast<unsigned>(retries));
        if (made.outcome.IsSuccess() || !shouldRetry(strategy, made, retries)) return std::move(made.outcome);
        lastError = made.outcome.GetError();
        if (made.correction != Correction::None) continue;
        const long delay = strategy.CalculateDelayBeforeNextRetry(*lastError, retries);
        if (delay > 0) sleep(std::chrono::milliseconds(delay));
    }
}

}  // namespace standin::aws
