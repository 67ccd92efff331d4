#include "s3/ErrorMarshalling.hpp"

#include <gtest/gtest.h>

#include <string>

#include "s3/Service.hpp"

using namespace standin::aws::s3;
using Aws::Client::CoreErrors;

namespace {

int typeOf(const CoreError& error) {
    return static_cast<int>(error.GetErrorType());
}

CoreError from(int status, const std::string& text) {
    return errorFrom(status, XmlDocument(text));
}

std::string document(const std::string& code, const std::string& message = "M") {
    return "<Error><Code>" + code + "</Code><Message>" + message + "</Message></Error>";
}

}  // namespace

TEST(ErrorWithoutBody, GoesByItsStatus) {
    EXPECT_EQ(typeOf(errorWithoutBody(403)), 15);
    EXPECT_EQ(typeOf(errorWithoutBody(401)), 15);
    EXPECT_EQ(typeOf(errorWithoutBody(404)), 16);
    EXPECT_EQ(typeOf(errorWithoutBody(416)), 100);
    EXPECT_EQ(errorWithoutBody(404).GetExceptionName(), "");
    EXPECT_EQ(errorWithoutBody(404).GetMessage(), "No response body.");
}

TEST(ErrorWithoutBody, IsRetriedForPassingStates) {
    for (const int status : {408, 429, 500, 502, 503, 504, 509})
        EXPECT_TRUE(errorWithoutBody(status).ShouldRetry());
    for (const int status : {400, 403, 404, 416, 501})
        EXPECT_FALSE(errorWithoutBody(status).ShouldRetry());
}

TEST(ErrorDocument, GoesByItsCodeWhateverTheStatus) {
    EXPECT_EQ(typeOf(from(200, document("NoSuchKey"))), 133);
    EXPECT_EQ(typeOf(from(500, document("NoSuchBucket"))), 132);
    EXPECT_EQ(typeOf(from(404, document("InvalidAccessKeyId"))), 23);
    EXPECT_EQ(typeOf(from(404, document("SignatureDoesNotMatch"))), 22);
    EXPECT_TRUE(from(400, document("SlowDown")).ShouldRetry());
}

TEST(ErrorDocument, OfAnUnknownCodeIsNeverRetried) {
    const auto error = from(503, document("Odd", "what now"));
    EXPECT_EQ(typeOf(error), 100);
    EXPECT_EQ(error.GetExceptionName(), "Odd");
    EXPECT_EQ(error.GetMessage(), "Unable to parse ExceptionName: Odd Message: what now");
    EXPECT_FALSE(error.ShouldRetry());
}

TEST(ErrorDocument, IsFoundAtTheRootBelowItOrBelowErrors) {
    for (const char* text :
         {"<Error><Code>NoSuchKey</Code></Error>", "<X><Error><Code>NoSuchKey</Code></Error></X>",
          "<X><Errors><Error><Code>NoSuchKey</Code></Error></Errors></X>"}) {
        EXPECT_EQ(typeOf(from(404, text)), 133) << text;
    }
}

TEST(ErrorDocument, ThatIsntUnderstoodGoesByTheStatus) {
    for (const char* text : {"not xml", "<html/>", "<Error/>", "<?xml version=\"1.0\"?>"}) {
        const auto error = from(503, text);
        EXPECT_EQ(typeOf(error), 12) << text;
        EXPECT_EQ(error.GetExceptionName(), "");
        EXPECT_EQ(error.GetMessage(), "");
        EXPECT_TRUE(error.ShouldRetry());
    }
}

TEST(ErrorDocument, SurvivesHostileNesting) {
    std::string deep;
    for (int i = 0; i < 100000; ++i)
        deep += "<a>";
    EXPECT_EQ(from(500, deep).GetExceptionName(), "");
}

TEST(MissingField, NamesTheField) {
    const auto error = missingField("Key");
    EXPECT_EQ(typeOf(error), 9);
    EXPECT_EQ(error.GetExceptionName(), "MISSING_PARAMETER");
    EXPECT_EQ(error.GetMessage(), "Missing required field [Key]");
    EXPECT_FALSE(error.ShouldRetry());
}
