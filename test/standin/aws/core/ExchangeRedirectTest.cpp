#include "ExchangeTest.hpp"

#include <aws/core/client/DefaultRetryStrategy.h>

using namespace standin::aws;
using Aws::Client::FollowRedirectsPolicy;
using ::testing::ElementsAre;
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

TEST_F(ExchangeRedirectTest, IsFollowedToALocationWithBlanks) {
    for (const std::string& location : {here("/b/two words"), std::string("two words")}) {
        expectRedirect(location);
        server.expect({Step::send(httpReply(200))});
        EXPECT_TRUE(send(get()).IsSuccess()) << location;
        EXPECT_EQ(seen().back().target, "/b/two%20words") << location;
    }
}

TEST_F(ExchangeRedirectTest, KeepsTheHostHeaderAtAnotherPortOfTheHost) {
    ScriptedServer other({{Step::send(httpReply(200))}});
    expectRedirect("http://" + other.endpoint() + "/b/k");
    EXPECT_TRUE(send(get()).IsSuccess());
    EXPECT_EQ(other.requests().at(0).header("Host"), server.endpoint());
}

TEST_F(ExchangeRedirectTest, KeepsTheMethodOfARequestWithoutBody) {
    for (const auto method : {Aws::Http::HttpMethod::HTTP_POST, Aws::Http::HttpMethod::HTTP_PUT}) {
        for (const int status : {301, 302, 303}) {
            expectRedirect(here("/b/moved"), status);
            server.expect({Step::send(httpReply(200))});
            ExchangeRequest request = get();
            request.method = method;
            EXPECT_TRUE(send(request).IsSuccess());
            EXPECT_EQ(seen().back().target, "/b/moved");
            EXPECT_EQ(seen().back().method, Aws::Http::HttpMethodMapper::GetNameForHttpMethod(method));
        }
    }
}

TEST_F(ExchangeRedirectTest, ToNowhereIsRetriedOverANewConnection) {
    configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(1, 0);
    for (const char* const nowhere : {"http://127.0.0.1:99999/x", "ftp://127.0.0.1/x"}) {
        const auto before = server.connections();
        expectRedirect(nowhere);
        server.expect({Step::send(httpReply(200))});
        EXPECT_TRUE(send(get()).IsSuccess()) << nowhere;
        EXPECT_EQ(server.connections(), before + 2) << nowhere;
    }
}

TEST_F(ExchangeRedirectTest, ToNowhereIsATransportFailure) {
    expectRedirect("http://127.0.0.1:99999/x");
    EXPECT_THAT(send(get()).GetError().GetMessage(), StartsWith("curlCode: 3, "));
}

TEST_F(ExchangeRedirectTest, ToAServerThatIsGoneKeepsTheAddressOfTheLastThatWasThere) {
    expectRedirect("http://" + ScriptedServer().endpoint() + "/x");
    const auto error = send(get()).GetError();
    EXPECT_THAT(error.GetMessage(), StartsWith("curlCode: 7, "));
    EXPECT_EQ(error.GetRemoteHostIpAddress(), "127.0.0.1");
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

    /// Whom the request of each attempt named, when the first is answered so and the rest are, too.
    std::vector<std::string> hostsAfter(const std::string& location, std::initializer_list<int> statuses) {
        testsupport::HeaderList headers{{"Location", location}};
        const auto before = seen().size();
        for (const int status : statuses) {
            server.expect({Step::send(httpReply(status, headers))});
            headers.clear();
        }
        EXPECT_TRUE(send(get()).IsSuccess()) << location;
        std::vector<std::string> hosts;
        for (auto request = before; request < seen().size(); ++request)
            hosts.push_back(seen().at(request).header("Host"));
        return hosts;
    }
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
        reply.otherHost = "http://" + otherName();
        return judgeByStatus(reply);
    });
    EXPECT_EQ(seen().at(1).header("Host"), otherName());
}

TEST_F(ExchangeOtherHostTest, IsAskedAtThePortOfTheFirst) {
    ScriptedServer stranger;
    const std::string location = "http://localhost:" + std::to_string(stranger.port()) + "/";
    EXPECT_THAT(hostsAfter(location, {503, 200}), ElementsAre(server.endpoint(), otherName()));
    EXPECT_THAT(hostsAfter("http://localhost:99999/", {503, 200}),
                ElementsAre(server.endpoint(), otherName()));
    EXPECT_EQ(stranger.connections(), 0U);
}

TEST_F(ExchangeOtherHostTest, IsAskedForTheNextAttemptOnly) {
    configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(2, 0);
    EXPECT_THAT(hostsAfter("http://localhost/", {503, 503, 200}),
                ElementsAre(server.endpoint(), otherName(), server.endpoint()));
}

TEST_F(ExchangeOtherHostTest, IsAskedAfterARedirectThatLeadsNowhere) {
    EXPECT_THAT(hostsAfter("http://localhost:99999/x", {307, 200}),
                ElementsAre(server.endpoint(), otherName()));
    EXPECT_THAT(seen().back().header("authorization"), StartsWith("AWS4-HMAC-SHA256 "));
}

TEST_F(ExchangeOtherHostTest, IsNoneWhereALocationNamesNone) {
    for (const char* const location :
         {"/x", "/x?y=http://localhost/", "localhost", "localhost/x", "//localhost/x", "?x", "http://",
          "http://user@localhost/x", "http://localhost:x@127.0.0.1/x", "http:// localhost/x",
          "http://local%68ost/x"}) {
        EXPECT_THAT(hostsAfter(location, {503, 200}), ElementsAre(server.endpoint(), server.endpoint()));
    }
}

TEST_F(ExchangeOtherHostTest, GetsNoSessionToken) {
    credentials = std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>("A", "S", "TOKEN");
    server.expect({Step::send(httpReply(503, {{"Location", "http://" + otherName() + "/"}}))});
    server.expect({Step::send(httpReply(200))});
    ASSERT_TRUE(send(get()).IsSuccess());
    EXPECT_EQ(seen().at(1).header("Host"), server.endpoint());
}

}  // namespace
