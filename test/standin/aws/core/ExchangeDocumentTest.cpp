#include "ExchangeTest.hpp"

#include <aws/core/client/DefaultRetryStrategy.h>

#include <atomic>

using namespace standin::aws;
using Aws::Client::CoreErrors;
using testsupport::httpReply;
using testsupport::Step;

namespace {

constexpr std::size_t mebibyte = std::size_t{1} << 20;
constexpr std::size_t endless = std::size_t{1} << 40;

}  // namespace

class ExchangeDocumentTest : public ExchangeTest {
protected:
    ExchangeDocumentTest() {
        configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(0);
    }

    /// A server that goes on until the client hangs up.
    void answerWithoutEnd(const std::string& head) {
        server.expect({Step::send(head + "\r\n\r\n"), Step::sendRepeat(std::string(mebibyte, 'x'), endless)});
    }
    void expectRefusal(const ExchangeOutcome& outcome) {
        ASSERT_FALSE(outcome.IsSuccess());
        EXPECT_EQ(outcome.GetError().GetErrorType(), CoreErrors::NETWORK_CONNECTION);
        EXPECT_EQ(outcome.GetError().GetMessage(), "The response's body is longer than it may be");
        EXPECT_FALSE(outcome.GetError().ShouldRetry());
    }

    ExchangeRequest content(const std::string& range = "") const {
        ExchangeRequest request = get();
        request.answersContent = true;
        if (!range.empty()) request.headers["range"] = range;
        return request;
    }
};

class ExchangeContentTest : public ExchangeDocumentTest {};

TEST_F(ExchangeDocumentTest, MayHaveSixteenMebibytes) {
    const std::string document(16 * mebibyte, 'x');
    server.expect({Step::send(httpReply(200, {}, document))});
    EXPECT_EQ(bodyOf(send(get())), document);
}

TEST_F(ExchangeDocumentTest, OfOneByteMoreIsAnError) {
    server.expect({Step::send(httpReply(200, {}, std::string(16 * mebibyte + 1, 'x')))});
    expectRefusal(send(get()));
}

TEST_F(ExchangeDocumentTest, WithoutEndIsAnError) {
    answerWithoutEnd("HTTP/1.1 200 OK\r\nConnection: close");
    expectRefusal(send(get()));
    answerWithoutEnd("HTTP/1.1 200 OK\r\nContent-Length: 9000000000000000000");
    expectRefusal(send(get()));
}

TEST_F(ExchangeDocumentTest, IsAlsoWhatSaysThatContentCantBeHad) {
    answerWithoutEnd("HTTP/1.1 404 Not Found\r\nConnection: close");
    expectRefusal(send(content("bytes=0-9")));
}

TEST_F(ExchangeContentTest, MayHaveAnyAnnouncedLength) {
    const std::string bytes(65 * mebibyte, 'x');
    server.expect({Step::send(httpReply(200, {}, bytes))});
    EXPECT_EQ(bodyOf(send(content())), bytes);
}

TEST_F(ExchangeContentTest, MayHave64MebibytesWithoutAnAnnouncedLength) {
    const std::string bytes(17 * mebibyte, 'x');
    server.expect({Step::send("HTTP/1.1 200 OK\r\n\r\n" + bytes), Step::close()});
    EXPECT_EQ(bodyOf(send(content())), bytes);
    answerWithoutEnd("HTTP/1.1 200 OK\r\nConnection: close");
    expectRefusal(send(content()));
}

TEST_F(ExchangeContentTest, OfARangeIsNoLongerThanWasAskedFor) {
    for (const int status : {200, 206}) {
        for (const char* const bytes : {"", "0123", "0123456789"}) {
            server.expect({Step::send(httpReply(status, {}, bytes))});
            EXPECT_EQ(bodyOf(send(content("bytes=10-19"))), bytes);
        }
        server.expect({Step::send(httpReply(status, {}, "01234567890"))});
        expectRefusal(send(content("bytes=10-19")));
        server.expect({Step::send("HTTP/1.1 206 OK\r\n\r\n01234567890"), Step::close()});
        expectRefusal(send(content(" bytes=-10 ")));
    }
}

TEST_F(ExchangeContentTest, OfAWholeObjectInPlaceOfARangeIsAnError) {
    for (const char* const length : {"Connection: close", "Content-Length: 9000000000"}) {
        answerWithoutEnd("HTTP/1.1 200 OK\r\n" + std::string(length));
        expectRefusal(send(content("bytes=0-8388607")));
    }
}

TEST_F(ExchangeContentTest, IsAskedForOnceWhenItIsTooLong) {
    configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(3, 0);
    server.expect({Step::send(httpReply(200, {}, "01234567890"))});
    expectRefusal(send(content("bytes=0-9")));
    EXPECT_EQ(seen().size(), 1U);
}

// By libcurl's own bound, a third of a megabyte.
TEST_F(ExchangeDocumentTest, WithoutEndOfItsHeadIsAnErrorLongBeforeItHasAllOfIt) {
    constexpr int lines = 10000;
    std::atomic<int> sent{0};
    const auto line = [&sent] {
        return "x-" + std::to_string(++sent) + ": " + std::string(20000, 'x') + "\r\n";
    };
    testsupport::Script script{Step::send("HTTP/1.1 200 OK\r\n")};
    for (int i = 0; i < lines; ++i)
        script.push_back(Step::sendMade(line));
    server.expect(std::move(script));
    EXPECT_FALSE(send(get()).IsSuccess());
    EXPECT_LT(sent, lines / 2);
}
