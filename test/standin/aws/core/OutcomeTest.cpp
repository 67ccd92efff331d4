#include <aws/core/client/CoreErrors.h>
#include <aws/core/utils/Outcome.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

using Aws::Client::AWSError;
using Aws::Client::CoreErrors;
using Aws::Utils::Outcome;

namespace {

using Error = AWSError<CoreErrors>;
enum class ServiceErrors { UNKNOWN = 100 };

TEST(Outcome, IsAFailureWithADefaultErrorByDefault) {
    const Outcome<std::string, Error> outcome;
    EXPECT_FALSE(outcome.IsSuccess());
    EXPECT_EQ(static_cast<int>(outcome.GetError().GetResponseCode()), -1);
}

TEST(Outcome, IsASuccessWithAResult) {
    const Outcome<std::string, Error> outcome(std::string("hello"));
    EXPECT_TRUE(outcome.IsSuccess());
    EXPECT_EQ(outcome.GetResult(), "hello");
}

TEST(Outcome, GivesAwayAResultThatOnlyMoves) {
    Outcome<std::unique_ptr<int>, Error> outcome(std::make_unique<int>(7));
    const std::unique_ptr<int> result = outcome.GetResultWithOwnership();
    EXPECT_EQ(*result, 7);
    EXPECT_EQ(outcome.GetResult(), nullptr);
}

TEST(Outcome, CarriesItsErrorIntoAnotherServicesOutcome) {
    Outcome<std::string, Error> core(Error(CoreErrors::UNKNOWN, "Name", "Text", true));
    const Outcome<std::string, AWSError<ServiceErrors>> outcome(std::move(core));
    EXPECT_FALSE(outcome.IsSuccess());
    EXPECT_EQ(outcome.GetError().GetErrorType(), ServiceErrors::UNKNOWN);
    EXPECT_EQ(outcome.GetError().GetMessage(), "Text");
}

TEST(Outcome, GivesItsErrorAsAnotherType) {
    const Outcome<std::string, Error> outcome(Error(CoreErrors::UNKNOWN, "Name", "Text", true));
    EXPECT_EQ(outcome.GetError<AWSError<ServiceErrors>>().GetExceptionName(), "Name");
}

TEST(Outcome, RemembersTheNumberOfRetries) {
    Outcome<std::string, Error> outcome;
    EXPECT_EQ(outcome.GetRetryCount(), 0U);
    outcome.SetRetryCount(3);
    EXPECT_EQ(outcome.GetRetryCount(), 3U);
}

}  // namespace
