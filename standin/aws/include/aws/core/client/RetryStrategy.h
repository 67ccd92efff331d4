#pragma once

#include <aws/core/client/AWSError.h>
#include <aws/core/client/CoreErrors.h>
#include <aws/core/http/HttpResponse.h>
#include <aws/core/utils/Outcome.h>

#include <memory>
#include <mutex>

namespace Aws::Client {

using HttpResponseOutcome =
    Aws::Utils::Outcome<std::shared_ptr<Aws::Http::HttpResponse>, AWSError<CoreErrors>>;

/// Decides about further attempts of a failed request. Shared by all requests of a client, so called from
/// several threads at once.
class RetryStrategy {
public:
    virtual ~RetryStrategy() = default;

    /// `attemptedRetries` is 0 after the first attempt.
    virtual bool ShouldRetry(const AWSError<CoreErrors>& error, long attemptedRetries) const = 0;

    /// Milliseconds.
    virtual long CalculateDelayBeforeNextRetry(const AWSError<CoreErrors>& error,
                                               long attemptedRetries) const = 0;

    /// The first one included; 0 when the strategy has no fixed number. Told to the service.
    virtual long GetMaxAttempts() const { return 0; }

    /// Told of the outcome of a request's first attempt, and of each further one together with the error of
    /// the attempt before.
    virtual void RequestBookkeeping(const HttpResponseOutcome& /*outcome*/) {}
    virtual void RequestBookkeeping(const HttpResponseOutcome& /*outcome*/,
                                    const AWSError<CoreErrors>& /*lastError*/) {}

    /// Told to the service in the user agent.
    virtual const char* GetStrategyName() const { return "custom"; }
};

/// Retries what is retryable after random delays whose bound doubles from a second to twenty, as the retry
/// mode "standard" of the reference guide for AWS SDKs and tools has it. All of a client's requests draw on
/// one quota, which successes refill: while most requests fail, few are repeated.
class StandardRetryStrategy : public RetryStrategy {
public:
    static constexpr long defaultMaxAttempts = 3;

    /// The first attempt included.
    explicit StandardRetryStrategy(long maxAttempts = defaultMaxAttempts);

    /// Takes from the quota when the answer is true.
    bool ShouldRetry(const AWSError<CoreErrors>& error, long attemptedRetries) const override;
    long CalculateDelayBeforeNextRetry(const AWSError<CoreErrors>& error,
                                       long attemptedRetries) const override;
    long GetMaxAttempts() const override { return maxAttempts_; }
    void RequestBookkeeping(const HttpResponseOutcome& outcome) override;
    void RequestBookkeeping(const HttpResponseOutcome& outcome,
                            const AWSError<CoreErrors>& lastError) override;
    const char* GetStrategyName() const override { return "standard"; }

private:
    bool takeQuota(int amount) const;
    void returnQuota(int amount) const;

    long maxAttempts_;
    mutable std::mutex mutex_;
    mutable int quota_;
};

}  // namespace Aws::Client
