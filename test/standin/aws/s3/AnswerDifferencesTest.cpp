#include <aws/s3/model/GetObjectRequest.h>
#include <aws/s3/model/HeadObjectRequest.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "AllOperations.hpp"
#include "support/CurlWords.hpp"
#include "support/ScriptedServer.hpp"

using Aws::S3::S3Errors;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using testsupport::httpReply;
using testsupport::Script;
using testsupport::ScriptedServer;
using testsupport::Step;

namespace {

// Where answers are read otherwise than the SDK reads them: docs/sdk-differences.md.

const std::string errorDocument =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<Error><Code>InternalError</Code><Message>We failed.</Message><RequestId>R</RequestId></Error>";

std::string at(const ScriptedServer& server, const std::string& path = "") {
    return "http://" + server.endpoint() + path;
}

Script redirectTo(const std::string& location) {
    return {Step::send(httpReply(307, {{"Location", location}}))};
}

Aws::S3::Model::GetObjectOutcome getObject(const ScriptedServer& server,
                                           const std::string& sessionToken = "") {
    Aws::S3::Model::GetObjectRequest request;
    request.SetBucket("b");
    request.SetKey("k");
    return clientOf(at(server), sessionToken).GetObject(request);
}

class AnyOperation : public ::testing::TestWithParam<Operation> {
protected:
    std::optional<Aws::S3::S3Error> failure() const {
        return GetParam().failureOf(clientOf(at(server)), "b", "k");
    }

    ScriptedServer server;
};

class DocumentOperation : public AnyOperation {};

}  // namespace

TEST(Redirects, AreFollowedFiveTimes) {
    ScriptedServer server;
    for (int i = 0; i < 7; ++i)
        server.expect(redirectTo(at(server, "/b/moved")));
    const auto outcome = getObject(server);
    ASSERT_FALSE(outcome.IsSuccess());
    EXPECT_EQ(outcome.GetError().GetErrorType(), S3Errors::NETWORK_CONNECTION);
    EXPECT_THAT(outcome.GetError().GetMessage(), StartsWith("curlCode: 47, "));
    EXPECT_EQ(server.requests().size(), 6U);
}

TEST(Redirects, TakeNoCredentialsToAnotherServer) {
    ScriptedServer stranger({{Step::send(httpReply(200))}});
    ScriptedServer server({redirectTo(at(stranger, "/b/k"))});
    EXPECT_TRUE(getObject(server, "TOKEN").IsSuccess());
    EXPECT_EQ(server.requests().at(0).header("x-amz-security-token"), "TOKEN");
    EXPECT_FALSE(stranger.requests().at(0).hasHeader("x-amz-security-token"));
    EXPECT_FALSE(stranger.requests().at(0).hasHeader("authorization"));
}

TEST(HeadsOfObjects, WithoutALengthAreErrors) {
    ScriptedServer server({{Step::send("HTTP/1.1 200 OK\r\nETag: \"e\"\r\n\r\n")}});
    Aws::S3::Model::HeadObjectRequest request;
    request.SetBucket("b");
    request.SetKey("k");
    const auto outcome = clientOf(at(server)).HeadObject(request);
    ASSERT_FALSE(outcome.IsSuccess());
    EXPECT_EQ(outcome.GetError().GetErrorType(), S3Errors::UNKNOWN);
    EXPECT_EQ(outcome.GetError().GetMessage(), "The response doesn't tell the object's length");
    EXPECT_EQ(static_cast<int>(outcome.GetError().GetResponseCode()), 200);
}

TEST(RangesOfObjects, HoldNoMoreThanWasAskedFor) {
    ScriptedServer server(
        {{Step::send(httpReply(206, {}, "0123456789"))}, {Step::send(httpReply(200, {}, "01234567890"))}});
    Aws::S3::Model::GetObjectRequest request;
    request.SetBucket("b");
    request.SetKey("k");
    request.SetRange("bytes=0-9");
    EXPECT_TRUE(clientOf(at(server)).GetObject(request).IsSuccess());
    const auto outcome = clientOf(at(server)).GetObject(request);
    ASSERT_FALSE(outcome.IsSuccess());
    EXPECT_EQ(outcome.GetError().GetMessage(), "The response's body is longer than it may be");
}

TEST(ErrorBodies, OfAnXmlDeclarationAloneArentUnderstood) {
    ScriptedServer server({{Step::send(httpReply(404, {}, "<?xml version=\"1.0\"?>"))}});
    const auto outcome = getObject(server);
    ASSERT_FALSE(outcome.IsSuccess());
    EXPECT_EQ(outcome.GetError().GetErrorType(), S3Errors::RESOURCE_NOT_FOUND);
    EXPECT_EQ(outcome.GetError().GetExceptionName(), "");
    EXPECT_EQ(outcome.GetError().GetMessage(), "");
}

TEST_P(DocumentOperation, FailsWithAnErrorDocumentWhateverTheStatus) {
    server.expect({Step::send(httpReply(200, {}, errorDocument))});
    const auto error = failure();
    ASSERT_TRUE(error);
    EXPECT_EQ(error->GetErrorType(), S3Errors::INTERNAL_FAILURE);
    EXPECT_EQ(error->GetExceptionName(), "InternalError");
    EXPECT_EQ(error->GetMessage(), "We failed.");
    EXPECT_EQ(static_cast<int>(error->GetResponseCode()), 200);
}

INSTANTIATE_TEST_SUITE_P(Differences, DocumentOperation, ::testing::ValuesIn(documentOperations()),
                         [](const auto& test) { return test.param.name; });

TEST(ObjectsThatAreErrorDocuments, AreContentAllTheSame) {
    ScriptedServer server({{Step::send(httpReply(200, {}, errorDocument))}});
    const auto outcome = getObject(server);
    ASSERT_TRUE(outcome.IsSuccess());
    std::ostringstream content;
    content << outcome.GetResult().GetBody().rdbuf();
    EXPECT_EQ(content.str(), errorDocument);
}

TEST_P(AnyOperation, FailsWithAnAnswerThatEndsInsideItsHead) {
    for (const char* const head : {"HTTP/1.1 200 OK\r\n", "HTTP/1.1 200 OK\r\nETag: \"e\"\r\n",
                                   "HTTP/1.1 200 OK\r\nContent-Len", "HTTP/1.1 204 No Content\r\n"}) {
        server.expect({Step::send(head), Step::close()});
        const auto error = failure();
        ASSERT_TRUE(error) << head;
        EXPECT_EQ(error->GetErrorType(), S3Errors::NETWORK_CONNECTION) << head;
        EXPECT_EQ(error->GetMessage(), testsupport::curlFailure(CURLE_PARTIAL_FILE)) << head;
        EXPECT_TRUE(error->ShouldRetry()) << head;
    }
}

INSTANTIATE_TEST_SUITE_P(Differences, AnyOperation, ::testing::ValuesIn(allOperations()),
                         [](const auto& test) { return test.param.name; });
