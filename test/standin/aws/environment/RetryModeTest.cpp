#include "core/RetryMode.hpp"

#include <aws/core/client/ClientConfiguration.h>

#include "EnvironmentTest.hpp"

using namespace Aws::Client;
using standin::aws::attemptsFrom;

namespace {

/// "standard 3": the mode, and how often it tries.
std::string configuredMode() {
    const auto strategy = ClientConfiguration().retryStrategy;
    return strategy->GetStrategyName() + (" " + std::to_string(strategy->GetMaxAttempts()));
}

class RetryMode : public EnvironmentTest {
protected:
    void useProfile(const std::string& settings) {
        write(".aws/config", "[default]\n" + settings);
        initializeSdk();
    }
};

TEST_F(RetryMode, IsTheOlderOneUnlessNamed) {
    EXPECT_EQ(configuredMode(), "default 11");
    environment.set("AWS_RETRY_MODE", "legacy");
    environment.set("AWS_MAX_ATTEMPTS", "5");
    EXPECT_EQ(configuredMode(), "default 11");
}

TEST_F(RetryMode, IsTheOneThatTheEnvironmentNames) {
    environment.set("AWS_RETRY_MODE", "standard");
    EXPECT_EQ(configuredMode(), "standard 3");
    environment.set("AWS_MAX_ATTEMPTS", "5");
    EXPECT_EQ(configuredMode(), "standard 5");
    environment.set("AWS_RETRY_MODE", "adaptive");
    EXPECT_EQ(configuredMode(), "adaptive 5");
}

TEST_F(RetryMode, IsTheProfilesWithoutVariables) {
    useProfile("retry_mode = standard\nmax_attempts = 7\n");
    EXPECT_EQ(configuredMode(), "standard 7");
    environment.set("AWS_MAX_ATTEMPTS", "2");
    EXPECT_EQ(configuredMode(), "standard 2");
    environment.set("AWS_RETRY_MODE", "legacy");
    EXPECT_EQ(configuredMode(), "default 11");
}

TEST(MaxAttempts, AreANumberAtTheTextsBeginning) {
    EXPECT_EQ(attemptsFrom("5"), 5);
    EXPECT_EQ(attemptsFrom(" 5 "), 5);
    EXPECT_EQ(attemptsFrom("5 times"), 5);
    EXPECT_EQ(attemptsFrom("0"), 0);
}

TEST(MaxAttempts, AreThreeForAnythingElse) {
    for (const char* const text : {"", " ", "many", "-1", "99999999999", "99999999999999999999999", "x5"})
        EXPECT_EQ(attemptsFrom(text), 3) << text;
}

const AWSError<CoreErrors> passing(CoreErrors::NETWORK_CONNECTION, true);
const AWSError<CoreErrors> timeout(CoreErrors::REQUEST_TIMEOUT, true);
const AWSError<CoreErrors> lasting(CoreErrors::ACCESS_DENIED, false);
const HttpResponseOutcome success(std::shared_ptr<Aws::Http::HttpResponse>{});
const HttpResponseOutcome failure(passing);

int retriesLeft(const StandardRetryStrategy& strategy) {
    int retries = 0;
    while (strategy.ShouldRetry(passing, 0))
        ++retries;
    return retries;
}

TEST(StandardRetries, AreOneLessThanTheAttempts) {
    const StandardRetryStrategy strategy(3);
    EXPECT_TRUE(strategy.ShouldRetry(passing, 1));
    EXPECT_FALSE(strategy.ShouldRetry(passing, 2));
    EXPECT_FALSE(strategy.ShouldRetry(lasting, 0));
    EXPECT_FALSE(StandardRetryStrategy(0).ShouldRetry(passing, 0));
}

TEST(StandardRetries, EndWhenTheClientsQuotaIsUsedUp) {
    const StandardRetryStrategy strategy;
    EXPECT_EQ(retriesLeft(strategy), 100);
    EXPECT_EQ(retriesLeft(strategy), 0);
}

TEST(StandardRetries, CostTwiceAsMuchAfterATimeout) {
    const StandardRetryStrategy strategy;
    EXPECT_TRUE(strategy.ShouldRetry(timeout, 0));
    EXPECT_EQ(retriesLeft(strategy), 98);
}

TEST(StandardRetries, AreGivenBackBySuccesses) {
    StandardRetryStrategy strategy;
    retriesLeft(strategy);
    strategy.RequestBookkeeping(failure);
    EXPECT_EQ(retriesLeft(strategy), 0);
    for (int i = 0; i < 5; ++i)
        strategy.RequestBookkeeping(success);
    EXPECT_EQ(retriesLeft(strategy), 1);
    strategy.RequestBookkeeping(success, passing);
    EXPECT_EQ(retriesLeft(strategy), 1);
}

TEST(StandardRetries, NeverHaveMoreThanTheirQuota) {
    StandardRetryStrategy strategy;
    for (int i = 0; i < 1000; ++i)
        strategy.RequestBookkeeping(success);
    EXPECT_EQ(retriesLeft(strategy), 100);
}

TEST(StandardRetries, WaitForRandomTimesWhoseBoundDoublesToTwentySeconds) {
    const StandardRetryStrategy strategy;
    for (int i = 0; i < 100; ++i) {
        EXPECT_LT(strategy.CalculateDelayBeforeNextRetry(passing, 0), 1000);
        EXPECT_LT(strategy.CalculateDelayBeforeNextRetry(passing, 2), 4000);
        EXPECT_LE(strategy.CalculateDelayBeforeNextRetry(passing, 1000000), 20000);
        EXPECT_GE(strategy.CalculateDelayBeforeNextRetry(passing, 1000000), 0);
    }
}

}  // namespace
