#include "ExchangeTest.hpp"

#include <aws/core/client/DefaultRetryStrategy.h>

#include <sstream>
#include <stdexcept>
#include <thread>

#include "support/process/Environment.hpp"
#include "support/servers/CurlWords.hpp"

using namespace standin::aws;
using Aws::Client::CoreErrors;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using testsupport::curlFailure;
using testsupport::httpReply;
using testsupport::Script;
using testsupport::Step;
using namespace std::chrono_literals;

namespace {

class ExchangeConnectionTest : public ExchangeTest {
protected:
    ExchangeConnectionTest() { noRetries(); }

    void noRetries() {
        configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(0, 0);
    }

    ExchangeError failure(const ExchangeRequest& request) {
        const auto outcome = send(request);
        EXPECT_FALSE(outcome.IsSuccess());
        EXPECT_EQ(outcome.GetError().GetErrorType(), CoreErrors::NETWORK_CONNECTION);
        EXPECT_EQ(outcome.GetError().GetExceptionName(), "");
        EXPECT_EQ(static_cast<int>(outcome.GetError().GetResponseCode()), -1);
        EXPECT_TRUE(outcome.GetError().ShouldRetry());
        return outcome.GetError();
    }

    std::vector<int> connections() const {
        std::vector<int> numbers;
        for (const auto& request : seen())
            numbers.push_back(request.connection);
        return numbers;
    }
};

struct BrokenAnswer {
    const char* name;
    Script script;
    CURLcode failure;
};

class ExchangeBrokenAnswerTest : public ExchangeConnectionTest,
                                 public ::testing::WithParamInterface<BrokenAnswer> {};

TEST_P(ExchangeBrokenAnswerTest, IsATransportFailure) {
    server.expect(GetParam().script);
    const ExchangeError error = failure(get());
    EXPECT_EQ(error.GetMessage(), curlFailure(GetParam().failure));
    EXPECT_EQ(error.GetRemoteHostIpAddress(), "127.0.0.1");
}

INSTANTIATE_TEST_SUITE_P(
    Exchange, ExchangeBrokenAnswerTest,
    ::testing::Values(
        BrokenAnswer{"None", {Step::close()}, CURLE_GOT_NOTHING},
        BrokenAnswer{"Reset", {Step::reset()}, CURLE_RECV_ERROR},
        BrokenAnswer{"BodyCut",
                     {Step::send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhello"), Step::close()},
                     CURLE_PARTIAL_FILE},
        BrokenAnswer{
            "ErrorBodyCut",
            {Step::send("HTTP/1.1 403 Forbidden\r\nContent-Length: 100\r\n\r\n<Error/>"), Step::close()},
            CURLE_PARTIAL_FILE},
        BrokenAnswer{"ChunksCut",
                     {Step::send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n"),
                      Step::close()},
                     CURLE_PARTIAL_FILE},
        BrokenAnswer{"BadChunk",
                     {Step::send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\nzz\r\n")},
                     CURLE_RECV_ERROR},
        BrokenAnswer{
            "NotHttp", {Step::send("SSH-2.0-OpenSSH_9.2\r\n"), Step::close()}, CURLE_UNSUPPORTED_PROTOCOL}),
    [](const auto& test) { return test.param.name; });

struct CutAnswer {
    const char* name;
    Aws::Http::HttpMethod method;
    std::string bytes;         ///< whole
    std::size_t optional = 0;  ///< bytes at its end that not every libcurl waits for
};

class ExchangeCutAnswerTest : public ExchangeConnectionTest, public ::testing::WithParamInterface<CutAnswer> {
protected:
    ExchangeOutcome sendAndGet(std::size_t bytes) {
        server.expect({Step::send(GetParam().bytes.substr(0, bytes)), Step::close()});
        ExchangeRequest request = GetParam().method == Aws::Http::HttpMethod::HTTP_PUT ? put("body") : get();
        request.method = GetParam().method;
        return send(request);
    }
};

TEST_P(ExchangeCutAnswerTest, IsATransportFailureWhereverItIsCut) {
    const std::size_t whole = GetParam().bytes.size();
    for (std::size_t bytes = 0; bytes < whole - GetParam().optional; ++bytes) {
        const auto outcome = sendAndGet(bytes);
        ASSERT_FALSE(outcome.IsSuccess()) << bytes;
        EXPECT_EQ(outcome.GetError().GetErrorType(), CoreErrors::NETWORK_CONNECTION) << bytes;
        EXPECT_EQ(static_cast<int>(outcome.GetError().GetResponseCode()), -1) << bytes;
        EXPECT_TRUE(outcome.GetError().ShouldRetry()) << bytes;
    }
    EXPECT_TRUE(sendAndGet(whole).IsSuccess());
}

INSTANTIATE_TEST_SUITE_P(
    Exchange, ExchangeCutAnswerTest,
    ::testing::Values(
        CutAnswer{"Sized", Aws::Http::HttpMethod::HTTP_GET,
                  "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello"},
        CutAnswer{"Chunked", Aws::Http::HttpMethod::HTTP_GET,
                  "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n0\r\n\r\n", 1},
        CutAnswer{"Unsized", Aws::Http::HttpMethod::HTTP_GET, "HTTP/1.1 200 OK\r\nETag: \"e\"\r\n\r\n"},
        CutAnswer{"Hinted", Aws::Http::HttpMethod::HTTP_GET,
                  "HTTP/1.1 103 Early Hints\r\nX: 1\r\n\r\nHTTP/1.1 200 OK\r\nX: 1\r\n\r\n"},
        CutAnswer{"BareLineFeeds", Aws::Http::HttpMethod::HTTP_GET, "HTTP/1.1 200 OK\nX: 1\n\n"},
        CutAnswer{"OfHead", Aws::Http::HttpMethod::HTTP_HEAD, "HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\n"},
        CutAnswer{"OfDelete", Aws::Http::HttpMethod::HTTP_DELETE, "HTTP/1.1 204 No Content\r\nX: 1\r\n\r\n"},
        CutAnswer{"OfPut", Aws::Http::HttpMethod::HTTP_PUT,
                  "HTTP/1.1 200 OK\r\nETag: \"e\"\r\nContent-Length: 0\r\n\r\n"}),
    [](const auto& test) { return test.param.name; });

TEST_F(ExchangeConnectionTest, TakesAnErrorWhoseHeadIsCutForWhatItsStatusSays) {
    for (const char* const head : {"HTTP/1.1 404 Not Found\r\n", "HTTP/1.1 404 Not Found\r\nX-A: 1\r\n"}) {
        for (const auto method : {Aws::Http::HttpMethod::HTTP_GET, Aws::Http::HttpMethod::HTTP_HEAD}) {
            server.expect({Step::send(head), Step::close()});
            ExchangeRequest request = get();
            request.method = method;
            const auto outcome = send(request);
            ASSERT_FALSE(outcome.IsSuccess());
            EXPECT_EQ(outcome.GetError().GetExceptionName(), "Refused");
            EXPECT_EQ(static_cast<int>(outcome.GetError().GetResponseCode()), 404);
        }
    }
}

TEST_F(ExchangeConnectionTest, ReadsAHeadersValueUpToAByteThatNoTextHas) {
    server.expect(
        {Step::send("HTTP/1.1 200 OK\r\nETag: \xe9 \xff z\r\nX-\xff: b\r\nContent-Length: 0\r\n\r\n")});
    EXPECT_THAT(send(get()).GetResult().headers,
                ElementsAre(Pair("content-length", "0"), Pair("etag", "\xe9"), Pair("x-\xff", "b")));
}

TEST_F(ExchangeConnectionTest, FollowsNoRedirectWhoseHeadIsCut) {
    server.expect({Step::send("HTTP/1.1 307 Moved\r\nLocation: /b/moved\r\n"), Step::close()});
    EXPECT_EQ(failure(get()).GetMessage(), curlFailure(CURLE_PARTIAL_FILE));
    EXPECT_EQ(seen().size(), 1U);
}

TEST_F(ExchangeConnectionTest, KeepsTheHeadersThatHadArrived) {
    server.expect(
        {Step::send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\nX-A: 1\r\n\r\nhello"), Step::close()});
    EXPECT_THAT(failure(get()).GetResponseHeaders(),
                ElementsAre(Pair("content-length", "100"), Pair("x-a", "1")));
}

TEST_F(ExchangeConnectionTest, HasNoAddressWithoutConnection) {
    ExchangeRequest request = get();
    {
        const testsupport::ScriptedServer gone;
        request.authority = gone.endpoint();
    }
    const ExchangeError error = failure(request);
    EXPECT_EQ(error.GetMessage(), curlFailure(CURLE_COULDNT_CONNECT));
    EXPECT_EQ(error.GetRemoteHostIpAddress(), "");
    EXPECT_THAT(error.GetResponseHeaders(), IsEmpty());
}

TEST_F(ExchangeConnectionTest, GivesUpOnSilence) {
    configuration.requestTimeoutMs = 500;
    server.expect({Step::sleep(60s)});
    EXPECT_EQ(failure(get()).GetMessage(), curlFailure(CURLE_OPERATION_TIMEDOUT));
}

TEST_F(ExchangeConnectionTest, GivesUpOnASlowAnswerWhenTheWholeRequestIsLimited) {
    configuration.httpRequestTimeoutMs = 300;
    server.expect({Step::send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n"),
                   Step::drip(std::string(1000, 'x'), 20ms)});
    EXPECT_EQ(failure(get()).GetMessage(), curlFailure(CURLE_OPERATION_TIMEDOUT));
}

TEST_F(ExchangeConnectionTest, IsUsedAgain) {
    for (int i = 0; i < 3; ++i)
        server.expect({Step::send(httpReply(200, {}, "hello"))});
    const Exchange exchange(configuration, credentials);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(bodyOf(exchange.send(get(), judgeByStatus)), "hello");
    EXPECT_THAT(connections(), ElementsAre(1, 1, 1));
}

TEST_F(ExchangeConnectionTest, IsUsedAgainForEveryMethod) {
    using Aws::Http::HttpMethod;
    const HttpMethod methods[] = {HttpMethod::HTTP_PUT,  HttpMethod::HTTP_HEAD,   HttpMethod::HTTP_GET,
                                  HttpMethod::HTTP_POST, HttpMethod::HTTP_DELETE, HttpMethod::HTTP_GET};
    const Exchange exchange(configuration, credentials);
    std::vector<std::string> names;
    for (const HttpMethod method : methods) {
        server.expect(
            {Step::send(method == HttpMethod::HTTP_HEAD ? "HTTP/1.1 200 OK\r\n\r\n" : httpReply(200))});
        ExchangeRequest request = get();
        request.method = method;
        if (method == HttpMethod::HTTP_PUT) request.body = std::make_shared<std::stringstream>("body");
        EXPECT_TRUE(exchange.send(request, judgeByStatus).IsSuccess());
        names.push_back(seen().back().method);
        EXPECT_EQ(seen().back().body, request.body ? "body" : "");
    }
    EXPECT_THAT(names, ElementsAre("PUT", "HEAD", "GET", "POST", "DELETE", "GET"));
    EXPECT_THAT(connections(), ElementsAre(1, 1, 1, 1, 1, 1));
}

TEST_F(ExchangeConnectionTest, IsReplacedWhenItBreaks) {
    server.expect({Step::send("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhello"), Step::close()});
    server.expect({Step::send(httpReply(200))});
    const Exchange exchange(configuration, credentials);
    EXPECT_FALSE(exchange.send(get(), judgeByStatus).IsSuccess());
    EXPECT_TRUE(exchange.send(get(), judgeByStatus).IsSuccess());
    EXPECT_THAT(connections(), ElementsAre(1, 2));
}

TEST_F(ExchangeConnectionTest, IsNotUsedAgainAfterBytesThatBelongToNoAnswer) {
    server.expect(
        {Step::send("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhelloHTTP/1.1 200 OK\r\n\r\nEXTRA")});
    server.expect({Step::send(httpReply(200, {}, "right"))});
    const Exchange exchange(configuration, credentials);
    EXPECT_EQ(bodyOf(exchange.send(get(), judgeByStatus)), "hello");
    EXPECT_EQ(bodyOf(exchange.send(get(), judgeByStatus)), "right");
    EXPECT_THAT(connections(), ElementsAre(1, 2));
}

TEST_F(ExchangeConnectionTest, IgnoresTheEnvironmentsProxies) {
    const testsupport::Environment environment{{"http_proxy", "http://127.0.0.1:9"},
                                               {"all_proxy", "http://127.0.0.1:9"}};
    server.expect({Step::send(httpReply(200))});
    EXPECT_TRUE(send(get()).IsSuccess());
}

TEST_F(ExchangeConnectionTest, TakesTheEnvironmentsProxyWhenAllowed) {
    const testsupport::Environment environment{{"http_proxy", "http://" + server.endpoint()},
                                               {"no_proxy", ""}};
    configuration.allowSystemProxy = true;
    server.expect({Step::send(httpReply(200))});
    ExchangeRequest request = get();
    request.authority = "b.s3.example.com";
    EXPECT_TRUE(send(request).IsSuccess());
    EXPECT_EQ(seen().at(0).target, "http://b.s3.example.com/b/k");
}

TEST_F(ExchangeConnectionTest, IsNotUsedToAnswerWithAnotherRequestsCookies) {
    server.expect({Step::send(httpReply(200, {{"Set-Cookie", "sid=abc; Path=/"}}))});
    server.expect({Step::send(httpReply(200))});
    const Exchange exchange(configuration, credentials);
    exchange.send(get(), judgeByStatus);
    exchange.send(get(), judgeByStatus);
    EXPECT_FALSE(seen().at(1).hasHeader("Cookie"));
}

class FailingProvider : public Aws::Auth::AWSCredentialsProvider {
public:
    Aws::Auth::AWSCredentials GetAWSCredentials() override {
        if (fails) throw std::runtime_error("no credentials today");
        return {"A", "S"};
    }
    bool fails = true;
};

TEST_F(ExchangeConnectionTest, IsNotLostWhenTheCredentialsProviderThrows) {
    const auto provider = std::make_shared<FailingProvider>();
    credentials = provider;
    configuration.maxConnections = 1;
    server.expect({Step::send(httpReply(200))});
    const Exchange exchange(configuration, credentials);
    for (int i = 0; i < 3; ++i)
        EXPECT_THROW(exchange.send(get(), judgeByStatus), std::runtime_error);
    provider->fails = false;
    EXPECT_TRUE(exchange.send(get(), judgeByStatus).IsSuccess());
}

TEST_F(ExchangeConnectionTest, IsSharedByMoreThreadsThanThereAre) {
    constexpr int threadCount = 8;
    constexpr int callsEach = 5;
    configuration.maxConnections = 2;
    for (int i = 0; i < threadCount * callsEach; ++i)
        server.expect({Step::send(httpReply(200, {}, "hello"))});
    const Exchange exchange(configuration, credentials);
    std::atomic<int> right{0};
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&] {
            for (int call = 0; call < callsEach; ++call) {
                if (bodyOf(exchange.send(get(), judgeByStatus)) == "hello") ++right;
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(right, threadCount * callsEach);
    for (const int connection : connections())
        EXPECT_LE(connection, 2);
}

TEST_F(ExchangeConnectionTest, IsFreeForOthersWhileFailedCallsWaitForTheirRetry) {
    configuration.maxConnections = 1;
    configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(3, 5);
    constexpr int threadCount = 6;
    for (int i = 0; i < threadCount * 4; ++i)
        server.expect({Step::send(httpReply(503))});
    const Exchange exchange(configuration, credentials);
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&] { EXPECT_FALSE(exchange.send(get(), judgeByStatus).IsSuccess()); });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(server.unusedScripts(), 0U);
    EXPECT_EQ(server.unexpectedRequests(), 0U);
}

}  // namespace
