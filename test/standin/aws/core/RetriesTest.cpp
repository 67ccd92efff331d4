#include "core/Retries.hpp"

#include <aws/core/client/DefaultRetryStrategy.h>
#include <gmock/gmock.h>

#include <vector>

using namespace standin::aws;
using Aws::Client::CoreErrors;
using Aws::Client::DefaultRetryStrategy;
using Aws::Client::HttpResponseOutcome;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

ExchangeError error(bool retryable, const char* name = "") {
    return {CoreErrors::UNKNOWN, name, "", retryable};
}

ExchangeReply reply(int status) {
    ExchangeReply made;
    made.status = status;
    return made;
}

struct Told {
    bool success;
    std::string lastError;
};

class ListeningStrategy : public DefaultRetryStrategy {
public:
    using DefaultRetryStrategy::DefaultRetryStrategy;

    void RequestBookkeeping(const HttpResponseOutcome& outcome) override {
        told.push_back({outcome.IsSuccess(), "none"});
    }
    void RequestBookkeeping(const HttpResponseOutcome& outcome, const ExchangeError& lastError) override {
        told.push_back({outcome.IsSuccess(), lastError.GetExceptionName()});
    }

    std::vector<Told> told;
};

class Retries : public ::testing::Test {
protected:
    ExchangeOutcome run(std::vector<Attempt> attempts) {
        return retry(
            strategy, [this](auto time) { sleeps.push_back(time.count()); },
            [&](long retries) {
                EXPECT_EQ(retries, made++);
                return std::move(attempts.at(static_cast<std::size_t>(retries)));
            });
    }

    ListeningStrategy strategy{3, 25};
    std::vector<long> sleeps;
    long made = 0;
};

template <typename... Made>
std::vector<Attempt> inTurn(Made&&... made) {
    std::vector<Attempt> all;
    (all.push_back(std::forward<Made>(made)), ...);
    return all;
}

TEST_F(Retries, EndWithTheFirstSuccess) {
    const auto outcome = run(inTurn(Attempt{error(true)}, Attempt{reply(200)}));
    EXPECT_TRUE(outcome.IsSuccess());
    EXPECT_EQ(made, 2);
    EXPECT_EQ(outcome.GetRetryCount(), 1U);
}

TEST_F(Retries, EndWithAnErrorThatIsNotRetryable) {
    const auto outcome = run(inTurn(Attempt{error(false, "Lasting")}));
    EXPECT_EQ(outcome.GetError().GetExceptionName(), "Lasting");
    EXPECT_EQ(made, 1);
}

TEST_F(Retries, EndWithTheLastErrorWhenTheStrategyGivesUp) {
    const auto outcome = run(inTurn(Attempt{error(true, "A")}, Attempt{error(true, "B")},
                                    Attempt{error(true, "C")}, Attempt{error(true, "D")}));
    EXPECT_EQ(outcome.GetError().GetExceptionName(), "D");
    EXPECT_EQ(made, 4);
}

TEST_F(Retries, SleepLongerBeforeEachAttemptButTheFirstTwo) {
    run(inTurn(Attempt{error(true)}, Attempt{error(true)}, Attempt{error(true)}, Attempt{error(true)}));
    EXPECT_THAT(sleeps, ElementsAre(50, 100));
}

TEST_F(Retries, RepeatAtOnceWhatAnAnswerCorrected) {
    const auto outcome = run(inTurn(Attempt{error(true)}, Attempt{error(true), Correction::Time},
                                    Attempt{error(false), Correction::Region}, Attempt{reply(200)}));
    EXPECT_TRUE(outcome.IsSuccess());
    EXPECT_THAT(sleeps, IsEmpty());
}

TEST_F(Retries, AskTheStrategyAfterACorrectedClockButNotAfterACorrectedRegion) {
    strategy = ListeningStrategy(0, 25);
    EXPECT_FALSE(run(inTurn(Attempt{error(true), Correction::Time}, Attempt{reply(200)})).IsSuccess());
    made = 0;
    EXPECT_TRUE(run(inTurn(Attempt{error(false), Correction::Region}, Attempt{reply(200)})).IsSuccess());
}

TEST_F(Retries, TellTheStrategyOfEachAttempt) {
    run(inTurn(Attempt{error(true, "A")}, Attempt{error(true, "B")}, Attempt{reply(200)}));
    ASSERT_EQ(strategy.told.size(), 3U);
    EXPECT_EQ(strategy.told[0].lastError, "none");
    EXPECT_EQ(strategy.told[1].lastError, "A");
    EXPECT_EQ(strategy.told[2].lastError, "B");
    EXPECT_FALSE(strategy.told[1].success);
    EXPECT_TRUE(strategy.told[2].success);
}

TEST(DefaultRetryStrategy, DoublesItsDelays) {
    const DefaultRetryStrategy strategy;
    std::vector<long> delays;
    for (long retries = 0; retries < 12; ++retries) {
        delays.push_back(strategy.CalculateDelayBeforeNextRetry(error(true), retries));
    }
    EXPECT_THAT(delays, ElementsAre(0, 50, 100, 200, 400, 800, 1600, 3200, 6400, 12800, 25600, 51200));
}

TEST(DefaultRetryStrategy, AllowsTenRetriesOfWhatIsRetryable) {
    const DefaultRetryStrategy strategy;
    EXPECT_TRUE(strategy.ShouldRetry(error(true), 9));
    EXPECT_FALSE(strategy.ShouldRetry(error(true), 10));
    EXPECT_FALSE(strategy.ShouldRetry(error(false), 0));
    EXPECT_EQ(strategy.GetMaxAttempts(), 11);
}

TEST(DefaultRetryStrategy, CountsTheDoublingsOfADelayIn64Bits) {
    const DefaultRetryStrategy strategy(1000, 25);
    const auto delay = [&](long retries) {
        return strategy.CalculateDelayBeforeNextRetry(error(true), retries);
    };
    EXPECT_EQ(delay(32), 107374182400);
    EXPECT_EQ(delay(63), std::numeric_limits<long>::min());
    EXPECT_EQ(delay(64), 25);
    EXPECT_EQ(delay(100), 1717986918400);
}

}  // namespace
