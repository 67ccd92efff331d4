#include "ExchangeTest.hpp"

#include <sstream>

using namespace standin::aws;
using Aws::Client::CoreErrors;
using testsupport::httpReply;
using testsupport::SeenRequest;
using testsupport::Step;

namespace {

class ExchangeBodyTest : public ExchangeTest {};

TEST_F(ExchangeBodyTest, SendsTheBodyWithItsLengthAndDigests) {
    server.expect({Step::send(httpReply(200))});
    ASSERT_TRUE(send(put("hello world")).IsSuccess());
    const SeenRequest request = seen().at(0);
    EXPECT_EQ(request.body, "hello world");
    EXPECT_EQ(request.header("content-length"), "11");
    EXPECT_EQ(request.header("content-md5"), "XrY7u+Ae7tCTyyK7j1rNww==");
    EXPECT_EQ(request.header("x-amz-content-sha256"),
              "b94d27b9934d3e08a52e52d7da7dabfac484efe37a5380ee9088f7ace2efcde9");
    EXPECT_EQ(request.header("Expect"), "100-continue");
}

TEST_F(ExchangeBodyTest, SendsALargeBodyWhole) {
    std::string body(2 * 1024 * 1024 + 1, '\0');
    for (std::size_t i = 0; i < body.size(); ++i)
        body[i] = static_cast<char>(i * 17 >> 2);
    server.expect({Step::send(httpReply(200))});
    ASSERT_TRUE(send(put(body)).IsSuccess());
    EXPECT_EQ(seen().at(0).body, body);
}

TEST_F(ExchangeBodyTest, SendsAPostsBody) {
    server.expect({Step::send(httpReply(200))});
    ExchangeRequest request = put("<x/>");
    request.method = Aws::Http::HttpMethod::HTTP_POST;
    request.sendMd5 = false;
    ASSERT_TRUE(send(request).IsSuccess());
    EXPECT_EQ(seen().at(0).method, "POST");
    EXPECT_EQ(seen().at(0).body, "<x/>");
    EXPECT_EQ(seen().at(0).header("Expect"), "100-continue");
    EXPECT_FALSE(seen().at(0).hasHeader("content-md5"));
}

TEST_F(ExchangeBodyTest, SendsAnEmptyBodyAsNone) {
    server.expect({Step::send(httpReply(200))});
    ASSERT_TRUE(send(put("")).IsSuccess());
    EXPECT_EQ(seen().at(0).header("content-length"), "0");
    EXPECT_EQ(seen().at(0).header("content-md5"), "1B2M2Y8AsgTpgAmY7PhCfg==");
    EXPECT_FALSE(seen().at(0).hasHeader("Expect"));
}

TEST_F(ExchangeBodyTest, SendsWithoutExpectWhereThatIsDisabled) {
    configuration.disableExpectHeader = true;
    server.expect({Step::send(httpReply(200))});
    ASSERT_TRUE(send(put("hello world")).IsSuccess());
    EXPECT_FALSE(seen().at(0).hasHeader("Expect"));
    EXPECT_EQ(seen().at(0).body, "hello world");
}

TEST_F(ExchangeBodyTest, SendsAgainWithoutExpectAfter417) {
    server.expect({Step::noReadBody(), Step::send(httpReply(417, {}, "no"))});
    server.expect({Step::readBody(), Step::send(httpReply(200, {}, "stored"))});
    const auto outcome = send(put("hello world"));
    ASSERT_TRUE(outcome.IsSuccess()) << outcome.GetError();
    EXPECT_EQ(bodyOf(outcome), "stored");
    ASSERT_EQ(seen().size(), 2U);
    EXPECT_EQ(seen().at(1).body, "hello world");
    EXPECT_FALSE(seen().at(1).hasHeader("Expect"));
}

TEST_F(ExchangeBodyTest, SendsNothingOfTheBodyAfterARefusal) {
    server.expect({Step::noReadBody(), Step::send(httpReply(403, {}, "no")), Step::close()});
    const ExchangeRequest request = put("hello world");
    const auto outcome = send(request);
    EXPECT_EQ(outcome.GetError().GetMessage(), "no");
    EXPECT_EQ(request.body->tellg(), 0);
}

TEST_F(ExchangeBodyTest, SendsTheBodyFromItsBeginningInEveryAttempt) {
    server.expect({Step::send(httpReply(503))});
    server.expect({Step::send(httpReply(200))});
    const ExchangeRequest request = put("hello world");
    request.body->seekg(6);
    ASSERT_TRUE(send(request).IsSuccess());
    EXPECT_EQ(seen().at(0).body, "hello world");
    EXPECT_EQ(seen().at(1).body, "hello world");
}

TEST_F(ExchangeBodyTest, SendsAsMuchAsAGivenContentLengthSays) {
    server.expect({Step::send(httpReply(200))});
    ExchangeRequest request = put("0123456789");
    request.headers["content-length"] = "6";
    ASSERT_TRUE(send(request).IsSuccess());
    EXPECT_EQ(seen().at(0).body, "012345");
    EXPECT_EQ(seen().at(0).header("content-md5"), "1qmpM8iq/FHlWsBmK25NSg==");
}

TEST_F(ExchangeBodyTest, RefusesAContentLengthThatCannotBe) {
    for (const char* const length : {"-1", "11", "1x", "", "99999999999999999999"}) {
        ExchangeRequest request = put("0123456789");
        request.headers["content-length"] = length;
        EXPECT_EQ(send(request).GetError().GetErrorType(), CoreErrors::VALIDATION) << length;
    }
    EXPECT_TRUE(seen().empty());
}

TEST_F(ExchangeBodyTest, SendsNothingOfAStreamThatHasFailed) {
    const ExchangeRequest request = put("0123456789");
    request.body->setstate(std::ios_base::badbit);
    const auto outcome = send(request);
    EXPECT_EQ(outcome.GetError().GetErrorType(), CoreErrors::VALIDATION);
    EXPECT_EQ(static_cast<int>(outcome.GetError().GetResponseCode()), -1);
    EXPECT_FALSE(outcome.GetError().ShouldRetry());
    EXPECT_TRUE(seen().empty());
}

}  // namespace
