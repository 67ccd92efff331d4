#include "ExchangeTest.hpp"

#include <aws/core/client/DefaultRetryStrategy.h>

using namespace standin::aws;
using Aws::Utils::DateFormat;
using Aws::Utils::DateTime;
using ::testing::MatchesRegex;
using testsupport::httpReply;
using testsupport::Script;
using testsupport::SeenRequest;
using testsupport::Step;

namespace {

class ExchangeRetryTest : public ExchangeTest {
protected:
    void allowRetries(long count) {
        configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(count, 0);
    }
};

Script answerAhead(int status, std::chrono::milliseconds ahead, const char* header = "Date") {
    return {Step::sendMade([=] {
        return httpReply(status, {{header, (DateTime::Now() + ahead).ToGmtString(DateFormat::RFC822)}});
    })};
}

std::chrono::milliseconds signedAhead(const SeenRequest& request) {
    return DateTime::Diff(DateTime(request.header("x-amz-date"), DateFormat::ISO_8601_BASIC),
                          DateTime::Now());
}

constexpr std::chrono::minutes slack(2);
constexpr std::chrono::hours hour(1);

TEST_F(ExchangeRetryTest, CountsItsAttempts) {
    allowRetries(2);
    for (const int status : {500, 500, 200})
        server.expect({Step::send(httpReply(status))});
    ASSERT_TRUE(send(get()).IsSuccess());
    EXPECT_EQ(seen().at(0).header("amz-sdk-request"), "attempt=1");
    EXPECT_EQ(seen().at(1).header("amz-sdk-request"), "attempt=2; max=3");
    EXPECT_EQ(seen().at(2).header("amz-sdk-request"), "attempt=3; max=3");
}

TEST_F(ExchangeRetryTest, KeepsTheInvocationOfACallButNotOfTheNext) {
    for (const int status : {500, 200, 200})
        server.expect({Step::send(httpReply(status))});
    send(get());
    send(get());
    const auto invocation = [this](std::size_t i) { return seen().at(i).header("amz-sdk-invocation-id"); };
    EXPECT_EQ(invocation(0), invocation(1));
    EXPECT_NE(invocation(1), invocation(2));
}

TEST_F(ExchangeRetryTest, ReportsTheLastError) {
    server.expect({Step::send(httpReply(500, {}, "first"))});
    server.expect({Step::send(httpReply(404, {}, "second"))});
    EXPECT_EQ(send(get()).GetError().GetMessage(), "second");
}

TEST_F(ExchangeRetryTest, TellsUntilWhenAnAnswerIsOfUseOnceItKnowsTheServersClock) {
    server.expect(answerAhead(503, std::chrono::seconds(0)));
    server.expect({Step::send(httpReply(200))});
    send(get());
    EXPECT_THAT(seen().at(1).header("amz-sdk-request"),
                MatchesRegex("ttl=[0-9]{8}T[0-9]{6}Z; attempt=2; max=2"));
}

TEST_F(ExchangeRetryTest, CorrectsItsClockOnceWhateverTheErrorAndKeepsItCorrected) {
    allowRetries(3);
    for (const int status : {404, 404, 200})
        server.expect(answerAhead(status, hour));
    const Exchange exchange(configuration, credentials);
    EXPECT_FALSE(exchange.send(get(), judgeByStatus).IsSuccess());
    EXPECT_EQ(seen().size(), 2U);
    EXPECT_TRUE(exchange.send(get(), judgeByStatus).IsSuccess());
    EXPECT_LT(std::chrono::abs(signedAhead(seen().at(0))), slack);
    EXPECT_LT(std::chrono::abs(signedAhead(seen().at(1)) - hour), slack);
    EXPECT_LT(std::chrono::abs(signedAhead(seen().at(2)) - hour), slack);
}

TEST_F(ExchangeRetryTest, ReportsAnErrorThatItsClockExplainsAsWorthAnotherAttempt) {
    allowRetries(0);
    for (const int status : {404, 200})
        server.expect(answerAhead(status, hour));
    const Exchange exchange(configuration, credentials);
    const ExchangeError error = exchange.send(get(), judgeByStatus).GetError();
    EXPECT_EQ(error.GetExceptionName(), "Refused");
    EXPECT_EQ(static_cast<int>(error.GetResponseCode()), 404);
    EXPECT_EQ(error.GetResponseHeaders().count("date"), 1U);
    EXPECT_TRUE(error.ShouldRetry());
    EXPECT_EQ(error.GetRemoteHostIpAddress(), "");
    EXPECT_EQ(seen().size(), 1U);
    EXPECT_TRUE(exchange.send(get(), judgeByStatus).IsSuccess());
    EXPECT_LT(std::chrono::abs(signedAhead(seen().at(1)) - hour), slack);
}

TEST_F(ExchangeRetryTest, ReadsTheServersClockFromXAmzDateToo) {
    for (const int status : {403, 200})
        server.expect(answerAhead(status, -hour, "x-amz-date"));
    EXPECT_TRUE(send(get()).IsSuccess());
    EXPECT_LT(std::chrono::abs(signedAhead(seen().at(1)) + hour), slack);
}

TEST_F(ExchangeRetryTest, LeavesItsClockAloneWhereThatIsDisabled) {
    configuration.enableClockSkewAdjustment = false;
    server.expect(answerAhead(404, hour));
    EXPECT_FALSE(send(get()).IsSuccess());
    EXPECT_EQ(seen().size(), 1U);
}

TEST_F(ExchangeRetryTest, SignsForTheRegionThatAnAnswerNamesWhenItsOwnIsAnyRegion) {
    configuration.region = "aws-global";
    server.expect({Step::send(httpReply(400, {{"x-amz-bucket-region", "eu-west-3"}}))});
    server.expect({Step::send(httpReply(200))});
    ASSERT_TRUE(send(get()).IsSuccess());
    EXPECT_THAT(seen().at(1).header("authorization"), ::testing::HasSubstr("/eu-west-3/s3/"));
}

TEST_F(ExchangeRetryTest, LearnsARegionOnceAndWithoutTheStrategysLeave) {
    allowRetries(0);
    configuration.region = "aws-global";
    for (const char* const region : {"eu-west-3", "eu-west-2"})
        server.expect({Step::send(httpReply(301, {{"x-amz-bucket-region", region}}))});
    EXPECT_FALSE(send(get()).IsSuccess());
    EXPECT_EQ(seen().size(), 2U);
}

TEST_F(ExchangeRetryTest, LearnsARegionFromStatusesThatComplainOfItOnly) {
    configuration.region = "aws-global";
    for (const int status : {301, 307, 400, 403}) {
        server.expect({Step::send(httpReply(status, {{"x-amz-bucket-region", "eu-west-3"}}))});
        server.expect({Step::send(httpReply(200))});
        EXPECT_TRUE(send(get()).IsSuccess()) << status;
    }
    server.expect({Step::send(httpReply(404, {{"x-amz-bucket-region", "eu-west-3"}}))});
    EXPECT_FALSE(send(get()).IsSuccess());
}

TEST_F(ExchangeRetryTest, KeepsItsOwnRegionOtherwise) {
    server.expect({Step::send(httpReply(400, {{"x-amz-bucket-region", "eu-west-3"}}))});
    EXPECT_FALSE(send(get()).IsSuccess());
    EXPECT_EQ(seen().size(), 1U);
}

class CountingProvider : public Aws::Auth::AWSCredentialsProvider {
public:
    Aws::Auth::AWSCredentials GetAWSCredentials() override {
        return {"AKID" + std::to_string(++asked), "SECRET"};
    }
    int asked = 0;
};

TEST_F(ExchangeRetryTest, AsksForCredentialsInEveryAttempt) {
    const auto provider = std::make_shared<CountingProvider>();
    credentials = provider;
    for (const int status : {500, 200})
        server.expect({Step::send(httpReply(status))});
    send(get());
    EXPECT_THAT(seen().at(0).header("authorization"), ::testing::HasSubstr("=AKID1/"));
    EXPECT_THAT(seen().at(1).header("authorization"), ::testing::HasSubstr("=AKID2/"));
}

TEST_F(ExchangeRetryTest, MakesItsOwnStrategyWhenTheConfigurationHasNone) {
    configuration.retryStrategy = nullptr;
    for (const int status : {500, 200})
        server.expect({Step::send(httpReply(status))});
    ASSERT_TRUE(send(get()).IsSuccess());
    EXPECT_EQ(seen().at(1).header("amz-sdk-request"), "attempt=2; max=11");
}

}  // namespace
