#include "ExchangeTest.hpp"

#include <aws/core/client/DefaultRetryStrategy.h>

#include <atomic>

#include "support/CurlWords.hpp"

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
        EXPECT_EQ(outcome.GetError().GetMessage(), testsupport::curlFailure(CURLE_FILESIZE_EXCEEDED));
    }
};

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
    auto request = get();
    request.answersContent = true;
    answerWithoutEnd("HTTP/1.1 404 Not Found\r\nConnection: close");
    expectRefusal(send(request));
}

TEST_F(ExchangeDocumentTest, IsNotWhatContentIs) {
    auto request = get();
    request.answersContent = true;
    const std::string content(17 * mebibyte, 'x');
    server.expect({Step::send(httpReply(200, {}, content))});
    EXPECT_EQ(bodyOf(send(request)), content);
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
