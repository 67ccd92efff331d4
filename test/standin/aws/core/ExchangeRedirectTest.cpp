#include "ExchangeTest.hpp"

#include <aws/core/client/DefaultRetryStrategy.h>

using namespace standin::aws;
using Aws::Client::FollowRedirectsPolicy;
using ::testing::StartsWith;
using testsupport::httpReply;
using testsupport::ScriptedServer;
using testsupport::Step;

namespace {

class ExchangeRedirectTest : public ExchangeTest {
protected:
    ExchangeRedirectTest() {
        configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(0, 0);
        credentials = std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>("A", "S", "TOKEN");
    }

    void expectRedirect(const std::string& location, int status = 307) {
        server.expect({Step::send(httpReply(status, {{"Location", location}}, "moved"))});
    }

    std::string here(const std::string& path) const { return "http://" + server.endpoint() + path; }
};

TEST_F(ExchangeRedirectTest, IsFollowedWithinOneAttempt) {
    expectRedirect(here("/b/moved"));
    server.expect({Step::send(httpReply(200, {}, "hello"))});
    const auto outcome = send(get());
    ASSERT_TRUE(outcome.IsSuccess()) << outcome.GetError();
    EXPECT_EQ(bodyOf(outcome), "hello");
    EXPECT_EQ(outcome.GetRetryCount(), 0U);
    EXPECT_EQ(seen().at(1).target, "/b/moved");
    EXPECT_EQ(seen().at(1).header("authorization"), seen().at(0).header("authorization"));
}

TEST_F(ExchangeRedirectTest, IsFollowedToARelativeLocation) {
    expectRedirect("/b/moved?a=1");
    server.expect({Step::send(httpReply(200))});
    send(get());
    EXPECT_EQ(seen().at(1).target, "/b/moved?a=1");
}

TEST_F(ExchangeRedirectTest, LeavesTheRedirectsOwnHeadersFirst) {
    expectRedirect(here("/b/moved"));
    server.expect({Step::send(httpReply(200, {{"ETag", "e"}}, "hello world"))});
    const auto outcome = send(get());
    EXPECT_EQ(outcome.GetResult().headers.at("content-length"), "5");
    EXPECT_EQ(outcome.GetResult().headers.at("etag"), "e");
}

TEST_F(ExchangeRedirectTest, TakesTheBodyAlong) {
    expectRedirect(here("/b/moved"));
    server.expect({Step::send(httpReply(200))});
    ASSERT_TRUE(send(put("hello world")).IsSuccess());
    EXPECT_EQ(seen().at(1).method, "PUT");
    EXPECT_EQ(seen().at(1).body, "hello world");
}

TEST_F(ExchangeRedirectTest, HandsNoCredentialsToAnotherServer) {
    ScriptedServer stranger({{Step::send(httpReply(200))}});
    expectRedirect("http://" + stranger.endpoint() + "/b/k");
    EXPECT_TRUE(send(get()).IsSuccess());
    const auto request = stranger.requests().at(0);
    EXPECT_FALSE(request.hasHeader("authorization"));
    EXPECT_FALSE(request.hasHeader("x-amz-security-token"));
}

TEST_F(ExchangeRedirectTest, HandsNoCredentialsToAnotherServerOnTheWayBack) {
    ScriptedServer stranger({{Step::send(httpReply(307, {{"Location", here("/b/again")}}))}});
    expectRedirect("http://" + stranger.endpoint() + "/b/k");
    server.expect({Step::send(httpReply(200))});
    EXPECT_TRUE(send(get()).IsSuccess());
    EXPECT_FALSE(seen().at(1).hasHeader("authorization"));
    EXPECT_FALSE(seen().at(1).hasHeader("x-amz-security-token"));
}

TEST_F(ExchangeRedirectTest, IsFollowedFiveTimesAndNotOnceMore) {
    for (int i = 0; i < 7; ++i)
        expectRedirect(here("/b/moved"));
    const auto outcome = send(get());
    EXPECT_THAT(outcome.GetError().GetMessage(), StartsWith("curlCode: 47, "));
    EXPECT_EQ(seen().size(), 6U);
}

TEST_F(ExchangeRedirectTest, ToAnotherProtocolIsATransportFailure) {
    expectRedirect("ftp://127.0.0.1/x");
    EXPECT_THAT(send(get()).GetError().GetMessage(), StartsWith("curlCode: 1, "));
}

TEST_F(ExchangeRedirectTest, IsLeftToTheCallerByPolicy) {
    configuration.followRedirects = FollowRedirectsPolicy::NEVER;
    expectRedirect(here("/b/moved"));
    const auto outcome = send(get());
    EXPECT_EQ(outcome.GetError().GetMessage(), "moved");
    EXPECT_EQ(static_cast<int>(outcome.GetError().GetResponseCode()), 307);
    EXPECT_EQ(seen().size(), 1U);
}

TEST_F(ExchangeRedirectTest, IsLeftToTheCallerInAnyRegionUnlessAlwaysFollowed) {
    configuration.region = "aws-global";
    expectRedirect(here("/b/moved"));
    EXPECT_FALSE(send(get()).IsSuccess());
    configuration.followRedirects = FollowRedirectsPolicy::ALWAYS;
    expectRedirect(here("/b/moved"));
    server.expect({Step::send(httpReply(200))});
    EXPECT_TRUE(send(get()).IsSuccess());
}

TEST_F(ExchangeRedirectTest, WithoutLocationIsAnAnswer) {
    server.expect({Step::send(httpReply(301, {}, "moved"))});
    EXPECT_EQ(send(get()).GetError().GetMessage(), "moved");
}

class ExchangeOtherHostTest : public ExchangeTest {
protected:
    std::string otherName() const { return "localhost:" + std::to_string(server.port()); }
};

TEST_F(ExchangeOtherHostTest, GetsTheRetryThatAFailedAnswersLocationAsksFor) {
    server.expect({Step::send(httpReply(503, {{"Location", "http://" + otherName() + "/moved"}}))});
    server.expect({Step::send(httpReply(200))});
    ASSERT_TRUE(send(get()).IsSuccess());
    EXPECT_EQ(seen().at(1).header("Host"), otherName());
    EXPECT_EQ(seen().at(1).target, "/b/k");
    EXPECT_NE(seen().at(1).header("authorization"), seen().at(0).header("authorization"));
}

TEST_F(ExchangeOtherHostTest, GetsTheRetryThatTheJudgeAsksFor) {
    server.expect({Step::send(httpReply(503))});
    server.expect({Step::send(httpReply(200))});
    const Exchange exchange(configuration, credentials);
    exchange.send(get(), [this](ExchangeReply& reply) {
        reply.otherHost = otherName();
        return judgeByStatus(reply);
    });
    EXPECT_EQ(seen().at(1).header("Host"), otherName());
}

TEST_F(ExchangeOtherHostTest, GetsNoSessionToken) {
    credentials = std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>("A", "S", "TOKEN");
    server.expect({Step::send(httpReply(503, {{"Location", "http://" + otherName() + "/"}}))});
    server.expect({Step::send(httpReply(200))});
    ASSERT_TRUE(send(get()).IsSuccess());
    EXPECT_EQ(seen().at(1).header("Host"), server.endpoint());
}

}  // namespace
