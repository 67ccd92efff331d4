#include "ExchangeTest.hpp"

#include <aws/core/client/DefaultRetryStrategy.h>

using namespace standin::aws;
using ::testing::StartsWith;
using testsupport::httpReply;
using testsupport::ScriptedServer;
using testsupport::Step;
using testsupport::TestAuthority;

namespace {

class ExchangeTlsTest : public ExchangeTest {
protected:
    ExchangeTlsTest()
        : secure({{Step::send(httpReply(200, {}, "hello"))}}, {authority.issue({"127.0.0.1"}), true}) {
        configuration.caFile = authority.caFile();
        configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(0, 0);
    }

    ExchangeRequest over(ExchangeRequest request) const {
        request.scheme = "https";
        request.authority = secure.endpoint();
        return request;
    }

    TestAuthority authority;
    ScriptedServer secure;
};

TEST_F(ExchangeTlsTest, SendsToAServerItTrusts) {
    const auto outcome = send(over(get()));
    ASSERT_TRUE(outcome.IsSuccess()) << outcome.GetError();
    EXPECT_EQ(bodyOf(outcome), "hello");
    EXPECT_EQ(secure.requests().at(0).header("x-amz-content-sha256"), "UNSIGNED-PAYLOAD");
}

TEST_F(ExchangeTlsTest, SignsThePayloadOnDemand) {
    ExchangeRequest request = over(put("hello world"));
    request.signPayload = true;
    ASSERT_TRUE(send(request).IsSuccess());
    EXPECT_EQ(secure.requests().at(0).header("x-amz-content-sha256"),
              "b94d27b9934d3e08a52e52d7da7dabfac484efe37a5380ee9088f7ace2efcde9");
}

TEST_F(ExchangeTlsTest, SendsABodyWithItsMd5) {
    ASSERT_TRUE(send(over(put("hello world"))).IsSuccess());
    EXPECT_EQ(secure.requests().at(0).body, "hello world");
    EXPECT_EQ(secure.requests().at(0).header("content-md5"), "XrY7u+Ae7tCTyyK7j1rNww==");
    EXPECT_EQ(secure.requests().at(0).header("x-amz-content-sha256"), "UNSIGNED-PAYLOAD");
}

TEST_F(ExchangeTlsTest, SendsNothingToAServerOfAnotherAuthority) {
    const TestAuthority other;
    configuration.caFile = other.caFile();
    configuration.caPath = "/nonexistent";
    EXPECT_THAT(send(over(get())).GetError().GetMessage(), StartsWith("curlCode: 60, "));
    EXPECT_TRUE(secure.waitForConnectionsToEnd());
    EXPECT_EQ(secure.connections(), 1U);
    EXPECT_EQ(secure.bytesReceived(), 0U);
}

TEST_F(ExchangeTlsTest, SendsNothingToAServerOfAnotherName) {
    ExchangeRequest request = over(get());
    request.authority = "localhost:" + std::to_string(secure.port());
    EXPECT_THAT(send(request).GetError().GetMessage(), StartsWith("curlCode: 60, "));
    EXPECT_TRUE(secure.waitForConnectionsToEnd());
    EXPECT_EQ(secure.connections(), 1U);
    EXPECT_EQ(secure.bytesReceived(), 0U);
}

TEST_F(ExchangeTlsTest, SendsToAnyServerWithoutVerification) {
    configuration.caFile.clear();
    configuration.verifySSL = false;
    EXPECT_TRUE(send(over(get())).IsSuccess());
}

TEST_F(ExchangeTlsTest, ReturnsToThePlainServerThatRedirectedToOneThatFails) {
    ScriptedServer failing({{Step::send(httpReply(500))}}, {authority.issue({"127.0.0.1"}), true});
    server.expect({Step::send(httpReply(307, {{"Location", "https://" + failing.endpoint() + "/b/k"}}))});
    server.expect({Step::send(httpReply(200))});
    configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(1, 0);
    EXPECT_TRUE(send(get()).IsSuccess());
    EXPECT_FALSE(failing.requests().at(0).hasHeader("authorization"));
    EXPECT_EQ(seen().at(1).header("amz-sdk-request"), "attempt=2; max=2");
}

TEST_F(ExchangeTlsTest, ReturnsToTheSecureServerThatRedirectedToOneThatFails) {
    ScriptedServer redirecting(
        {{Step::send(httpReply(307, {{"Location", "http://" + server.endpoint() + "/b/k"}}))},
         {Step::send(httpReply(200))}},
        {authority.issue({"127.0.0.1"}), true});
    server.expect({Step::send(httpReply(500))});
    configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(1, 0);
    ExchangeRequest request = over(get());
    request.authority = redirecting.endpoint();
    EXPECT_TRUE(send(request).IsSuccess());
    EXPECT_FALSE(seen().at(0).hasHeader("authorization"));
    EXPECT_EQ(redirecting.requests().size(), 2U);
}

TEST_F(ExchangeTlsTest, TrustsASecureProxyByItsOwnCertificatesOnly) {
    configuration.proxyScheme = Aws::Http::Scheme::HTTPS;
    configuration.proxyHost = "127.0.0.1";
    configuration.proxyPort = secure.port();
    ExchangeRequest request = get();
    request.authority = "b.s3.example.com";
    EXPECT_THAT(send(request).GetError().GetMessage(), StartsWith("curlCode: 60, "));
    configuration.verifySSL = false;
    EXPECT_THAT(send(request).GetError().GetMessage(), StartsWith("curlCode: 60, "));
    EXPECT_TRUE(secure.requests().empty());
    configuration.proxyCaFile = authority.caFile();
    EXPECT_EQ(bodyOf(send(request)), "hello");
    EXPECT_EQ(secure.requests().at(0).target, "http://b.s3.example.com/b/k");
}

TEST_F(ExchangeTlsTest, HandsNoCredentialsToAPlainServerOnRedirect) {
    secure.expect({Step::send(httpReply(200))});
    ScriptedServer redirecting(
        {{Step::send(httpReply(307, {{"Location", "http://" + server.endpoint() + "/b/k"}}))}},
        {authority.issue({"127.0.0.1"}), true});
    server.expect({Step::send(httpReply(200))});
    ExchangeRequest request = over(get());
    request.authority = redirecting.endpoint();
    ASSERT_TRUE(send(request).IsSuccess());
    EXPECT_FALSE(seen().at(0).hasHeader("authorization"));
}

}  // namespace
