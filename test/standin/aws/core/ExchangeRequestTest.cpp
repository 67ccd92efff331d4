#include "ExchangeTest.hpp"

#include <aws/core/client/DefaultRetryStrategy.h>

using namespace standin::aws;
using Aws::Http::HttpMethod;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::MatchesRegex;
using testsupport::httpReply;
using testsupport::SeenRequest;
using testsupport::Step;

namespace {

class ExchangeRequestTest : public ExchangeTest {
protected:
    ExchangeRequestTest() { server.expect({Step::send(httpReply(200))}); }

    SeenRequest sent(const ExchangeRequest& request) {
        const auto outcome = send(request);
        EXPECT_TRUE(outcome.IsSuccess()) << outcome.GetError();
        return seen().at(0);
    }
};

TEST_F(ExchangeRequestTest, SendsItsHeadersInOrder) {
    credentials = std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>("A", "S", "TOKEN");
    ExchangeRequest request = get();
    request.headers = {{"content-type", "application/xml"}, {"x-amz-api-version", "2006-03-01"}};
    EXPECT_THAT(headerNames(sent(request)),
                ElementsAre("Host", "Accept", "amz-sdk-invocation-id", "amz-sdk-request", "authorization",
                            "content-type", "user-agent", "x-amz-api-version", "x-amz-content-sha256",
                            "x-amz-date", "x-amz-security-token"));
}

TEST_F(ExchangeRequestTest, SendsABodysHeadersInOrder) {
    EXPECT_THAT(headerNames(sent(put("hello world"))),
                ElementsAre("Host", "Accept", "amz-sdk-invocation-id", "amz-sdk-request", "authorization",
                            "content-length", "content-md5", "user-agent", "x-amz-content-sha256",
                            "x-amz-date", "Expect"));
}

TEST_F(ExchangeRequestTest, SaysWhoSends) {
    const SeenRequest request = sent(get());
    EXPECT_THAT(request.header("user-agent"),
                MatchesRegex("aws-sdk-cpp/1\\.11\\.274 ua/2\\.0 md/aws-crt#0\\.26\\.2 os/[^ ]+ md/arch#[^ ]+ "
                             "lang/c\\+\\+#C\\+\\+11 md/[^ ]+ cfg/retry-mode#default api/S3"));
    EXPECT_EQ(request.header("amz-sdk-request"), "attempt=1");
    EXPECT_THAT(request.header("amz-sdk-invocation-id"),
                MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
}

TEST_F(ExchangeRequestTest, SignsForItsRegionService) {
    ExchangeRequest request = get();
    request.signingRegion = "eu-west-3";
    EXPECT_THAT(sent(request).header("authorization"),
                MatchesRegex("AWS4-HMAC-SHA256 Credential=AKIDEXAMPLE/[0-9]{8}/eu-west-3/s3/aws4_request, "
                             "SignedHeaders=amz-sdk-invocation-id;amz-sdk-request;host;x-amz-content-sha256;"
                             "x-amz-date, Signature=[0-9a-f]{64}"));
}

TEST_F(ExchangeRequestTest, GoesOutUnsignedWithoutCredentials) {
    credentials = std::make_shared<Aws::Auth::AnonymousAWSCredentialsProvider>();
    EXPECT_THAT(headerNames(sent(get())),
                ElementsAre("Host", "Accept", "amz-sdk-invocation-id", "amz-sdk-request", "user-agent"));
}

TEST_F(ExchangeRequestTest, AddressesTheObjectByteByByte) {
    ExchangeRequest request = get("/b/a//b/../c d+e");
    request.query = {{"versionId", "a/b"}, {"list", ""}};
    EXPECT_EQ(sent(request).target, "/b/a//b/../c%20d%2Be?list=&versionId=a%2Fb");
}

TEST_F(ExchangeRequestTest, SendsAnEmptyHeaderValue) {
    ExchangeRequest request = get();
    request.headers["range"] = "";
    const SeenRequest seenRequest = sent(request);
    EXPECT_TRUE(seenRequest.hasHeader("range"));
    EXPECT_THAT(seenRequest.header("authorization"), HasSubstr(";range;"));
}

TEST_F(ExchangeRequestTest, SaysThatAPostOrPutHasNoBody) {
    for (const HttpMethod method : {HttpMethod::HTTP_POST, HttpMethod::HTTP_PUT}) {
        server.expect({Step::send(httpReply(200))});
        ExchangeRequest request = get();
        request.method = method;
        send(request);
        const SeenRequest last = seen().back();
        EXPECT_EQ(last.method, Aws::Http::HttpMethodMapper::GetNameForHttpMethod(method));
        EXPECT_EQ(last.header("content-length"), "0");
        EXPECT_FALSE(last.hasHeader("Expect"));
        EXPECT_FALSE(last.hasHeader("Transfer-Encoding"));
    }
}

TEST_F(ExchangeRequestTest, SendsADeleteWithoutLength) {
    ExchangeRequest request = get();
    request.method = HttpMethod::HTTP_DELETE;
    const SeenRequest seenRequest = sent(request);
    EXPECT_EQ(seenRequest.method, "DELETE");
    EXPECT_FALSE(seenRequest.hasHeader("content-length"));
}

TEST_F(ExchangeRequestTest, GoesThroughAProxyWithItsPassword) {
    configuration.proxyHost = "127.0.0.1";
    configuration.proxyPort = server.port();
    configuration.proxyUserName = "user";
    configuration.proxyPassword = "p@ss:w";
    ExchangeRequest request = get();
    request.authority = "b.s3.example.com";
    const SeenRequest seenRequest = sent(request);
    EXPECT_EQ(seenRequest.target, "http://b.s3.example.com/b/k");
    EXPECT_EQ(seenRequest.header("Proxy-Authorization"), "Basic dXNlcjpwQHNzOnc=");
    EXPECT_THAT(
        headerNames(seenRequest),
        ElementsAre("Host", "Proxy-Authorization", "Accept", "Proxy-Connection", "amz-sdk-invocation-id",
                    "amz-sdk-request", "authorization", "user-agent", "x-amz-content-sha256", "x-amz-date"));
}

TEST_F(ExchangeRequestTest, SaysTheUserAgentOfTheConfigurationAndTheService) {
    for (const char* const userAgent : {"mine/1", " mine/1", "mine/1 api/S3"}) {
        configuration.userAgent = userAgent;
        EXPECT_TRUE(send(get()).IsSuccess());
        EXPECT_EQ(seen().back().header("user-agent"), "mine/1 api/S3");
        server.expect({Step::send(httpReply(200))});
    }
}

TEST_F(ExchangeRequestTest, NamesTheHostAsItIsWritten) {
    ExchangeRequest request = get();
    request.authority = "127.1:" + std::to_string(server.port());
    EXPECT_EQ(sent(request).header("Host"), request.authority);
}

TEST_F(ExchangeRequestTest, SendsValuesWithoutTheWhiteSpaceAroundThem) {
    credentials = std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>("A", "S", "\t TOKEN \r\n");
    ExchangeRequest request = get();
    request.headers["range"] = "\n bytes=0-9\v\f ";
    const SeenRequest seenRequest = sent(request);
    EXPECT_EQ(seenRequest.header("x-amz-security-token"), "TOKEN");
    EXPECT_EQ(seenRequest.header("range"), "bytes=0-9");
}

TEST_F(ExchangeRequestTest, SendsNoControlCharacterWithinAValue) {
    for (const char* const value : {"bytes=0-9\r\nx-injected: yes", "bytes=0-9\nx: y", "bytes=0\x01-9"}) {
        ExchangeRequest request = get();
        request.headers["range"] = value;
        EXPECT_EQ(send(request).GetError().GetErrorType(), Aws::Client::CoreErrors::VALIDATION);
        configuration.userAgent = value;
        EXPECT_EQ(send(get()).GetError().GetErrorType(), Aws::Client::CoreErrors::VALIDATION);
        configuration.userAgent.clear();
    }
    EXPECT_EQ(server.connections(), 0U);
}

}  // namespace
