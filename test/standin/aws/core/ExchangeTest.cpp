#include "ExchangeTest.hpp"

#include <aws/core/client/DefaultRetryStrategy.h>

#include <sstream>

using namespace standin::aws;
using Aws::Client::CoreErrors;
using Aws::Http::HttpMethod;
using Aws::Http::HttpResponseCode;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Pair;
using testsupport::httpReply;
using testsupport::SeenRequest;
using testsupport::Step;

ExchangeTest::ExchangeTest()
    : credentials(std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>("AKIDEXAMPLE", "SECRETEXAMPLE")) {
    configuration.scheme = Aws::Http::Scheme::HTTP;
    configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(1, 1);
}

ExchangeRequest ExchangeTest::get(const std::string& path) const {
    ExchangeRequest request;
    request.scheme = "http";
    request.authority = server.endpoint();
    request.path = path;
    request.signingRegion = "us-east-1";
    return request;
}

ExchangeRequest ExchangeTest::put(const std::string& body) const {
    ExchangeRequest request = get();
    request.method = HttpMethod::HTTP_PUT;
    request.body = std::make_shared<std::stringstream>(body);
    request.sendMd5 = true;
    return request;
}

ExchangeOutcome ExchangeTest::send(const ExchangeRequest& request) {
    ExchangeOutcome outcome = Exchange(configuration, credentials).send(request, judgeByStatus);
    server.waitForConnectionsToEnd();
    return outcome;
}

std::unique_ptr<ExchangeError> judgeByStatus(ExchangeReply& reply) {
    if (reply.status / 100 == 2) return nullptr;
    return std::make_unique<ExchangeError>(CoreErrors::UNKNOWN, "Refused", reply.body, reply.status >= 500);
}

std::string bodyOf(const ExchangeOutcome& outcome) {
    return outcome.GetResult().body;
}

std::vector<std::string> headerNames(const SeenRequest& request) {
    std::vector<std::string> names;
    for (const auto& header : request.headers)
        names.push_back(header.first);
    return names;
}

namespace {

TEST_F(ExchangeTest, GivesStatusHeadersAddressAndBody) {
    server.expect(
        {Step::send("HTTP/1.1 206 Partial Content\r\nETag: \"e\"\r\nContent-Length: 5\r\n\r\nhello")});
    const auto outcome = send(get());
    ASSERT_TRUE(outcome.IsSuccess()) << outcome.GetError();
    EXPECT_EQ(outcome.GetResult().status, 206);
    EXPECT_THAT(outcome.GetResult().headers, ElementsAre(Pair("content-length", "5"), Pair("etag", "\"e\"")));
    EXPECT_EQ(outcome.GetResult().remoteAddress, "127.0.0.1");
    EXPECT_EQ(bodyOf(outcome), "hello");
}

TEST_F(ExchangeTest, ReadsABodyOfAnyLengthAndBytes) {
    std::string body(3 * 1024 * 1024 + 1, '\0');
    for (std::size_t i = 0; i < body.size(); ++i)
        body[i] = static_cast<char>(i * 31 >> 3);
    server.expect({Step::send(httpReply(200, {}, body))});
    EXPECT_EQ(bodyOf(send(get())), body);
}

TEST_F(ExchangeTest, ReadsAChunkedBody) {
    server.expect({Step::send(
        "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n6\r\n world\r\n0\r\n\r\n")});
    EXPECT_EQ(bodyOf(send(get())), "hello world");
}

TEST_F(ExchangeTest, ReadsABodyThatEndsWithTheConnection) {
    server.expect({Step::send("HTTP/1.1 200 OK\r\n\r\nhello"), Step::close()});
    EXPECT_EQ(bodyOf(send(get())), "hello");
}

TEST_F(ExchangeTest, LeavesACompressedBodyAsItIs) {
    server.expect({Step::send(httpReply(200, {{"Content-Encoding", "gzip"}}, "not really gzip"))});
    EXPECT_EQ(bodyOf(send(get())), "not really gzip");
}

TEST_F(ExchangeTest, KeepsTheFirstOfSeveralEqualHeaders) {
    server.expect(
        {Step::send("HTTP/1.1 103 Early Hints\r\nETag: early\r\n\r\n"
                    "HTTP/1.1 200 OK\r\nETag: late\r\nX-A: 1\r\nx-a: 2\r\nContent-Length: 0\r\n\r\n")});
    const auto outcome = send(get());
    EXPECT_THAT(outcome.GetResult().headers,
                ElementsAre(Pair("content-length", "0"), Pair("etag", "early"), Pair("x-a", "1")));
}

TEST_F(ExchangeTest, TrimsHeaderValuesAndKeepsEmptyOnes) {
    server.expect({Step::send("HTTP/1.1 200 OK\r\nETag:   \"padded\"  \r\nX-Empty: \r\nX-Colon:a:b\r\n\r\n"),
                   Step::close()});
    EXPECT_THAT(send(get()).GetResult().headers,
                ElementsAre(Pair("etag", "\"padded\""), Pair("x-colon", "a:b"), Pair("x-empty", "")));
}

TEST_F(ExchangeTest, GivesAnErrorTheAnswersCodeHeadersAndAddress) {
    server.expect({Step::send(httpReply(404, {{"X-A", "1"}}, "gone"))});
    const auto outcome = send(get());
    ASSERT_FALSE(outcome.IsSuccess());
    const ExchangeError& error = outcome.GetError();
    EXPECT_EQ(error.GetMessage(), "gone");
    EXPECT_EQ(error.GetResponseCode(), HttpResponseCode::NOT_FOUND);
    EXPECT_EQ(error.GetRemoteHostIpAddress(), "127.0.0.1");
    EXPECT_THAT(error.GetResponseHeaders(), ElementsAre(Pair("content-length", "4"), Pair("x-a", "1")));
    EXPECT_FALSE(error.ShouldRetry());
}

TEST_F(ExchangeTest, ReadsTheAnswerToHeadWithoutWaitingForABody) {
    server.expect({Step::send("HTTP/1.1 200 OK\r\nContent-Length: 12345\r\n\r\n")});
    ExchangeRequest request = get();
    request.method = HttpMethod::HTTP_HEAD;
    const auto outcome = send(request);
    ASSERT_TRUE(outcome.IsSuccess()) << outcome.GetError();
    EXPECT_EQ(bodyOf(outcome), "");
    EXPECT_EQ(seen().at(0).method, "HEAD");
}

TEST_F(ExchangeTest, RefusesAHostThatWouldMeanAnother) {
    for (const char* const authority :
         {"", "user@127.0.0.1", "127.0.0.1/x", "127.0.0.1?x", "a b", "a\r\nb", "a%62"}) {
        ExchangeRequest request = get();
        request.authority = authority;
        const auto outcome = send(request);
        EXPECT_EQ(outcome.GetError().GetErrorType(), CoreErrors::VALIDATION) << authority;
    }
    EXPECT_TRUE(seen().empty());
}

TEST_F(ExchangeTest, RefusesHeaderValuesThatWouldBecomeFurtherHeaders) {
    ExchangeRequest request = get();
    request.headers["range"] = "bytes=0-1\r\nx-amz-acl: public-read";
    const auto outcome = send(request);
    EXPECT_EQ(outcome.GetError().GetErrorType(), CoreErrors::VALIDATION);
    EXPECT_THAT(outcome.GetError().GetMessage(), HasSubstr("range"));
    EXPECT_TRUE(seen().empty());
}

TEST_F(ExchangeTest, RefusesATokenOfTwoLinesWithoutShowingIt) {
    credentials = std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>("A", "S", "SECRETTOKEN\nx");
    const auto outcome = send(get());
    EXPECT_EQ(outcome.GetError().GetErrorType(), CoreErrors::VALIDATION);
    EXPECT_THAT(outcome.GetError().GetMessage(), ::testing::Not(HasSubstr("SECRETTOKEN")));
    EXPECT_TRUE(seen().empty());
}

}  // namespace
