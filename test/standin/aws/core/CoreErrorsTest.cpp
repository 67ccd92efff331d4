#include <aws/core/client/CoreErrors.h>
#include <gmock/gmock.h>

#include <sstream>

using Aws::Client::AWSError;
using Aws::Client::CoreErrors;
using Aws::Client::RetryableType;
using Aws::Http::HttpResponseCode;

namespace {

enum class ZooErrors { LION_ESCAPED = 128 };

std::string printed(const AWSError<CoreErrors>& error) {
    std::ostringstream out;
    out << error;
    return out.str();
}

AWSError<CoreErrors> lostLion() {
    AWSError<CoreErrors> error(static_cast<CoreErrors>(128), "LionEscaped", "The gate was open", true);
    error.SetResponseCode(HttpResponseCode::CONFLICT);
    error.SetRemoteHostIpAddress("192.0.2.1");
    error.SetRequestId("RID");
    error.SetResponseHeaders({{"a", "1"}});
    return error;
}

TEST(AWSError, IsNotMadeAndNotRetryableByDefault) {
    const AWSError<CoreErrors> error;
    EXPECT_EQ(static_cast<int>(error.GetErrorType()), 0);
    EXPECT_EQ(error.GetResponseCode(), HttpResponseCode::REQUEST_NOT_MADE);
    EXPECT_FALSE(error.ShouldRetry());
    EXPECT_FALSE(error.ShouldThrottle());
}

TEST(AWSError, IsPrintedOnSixLinesWithoutHeaders) {
    EXPECT_EQ(printed({}),
              "HTTP response code: -1\nResolved remote host IP address: \nRequest ID: \nException name: \n"
              "Error message: \n0 response headers:");
}

TEST(AWSError, IsPrintedWithOneLineForEachHeaderByName) {
    AWSError<CoreErrors> error(CoreErrors::UNKNOWN, "NoSuchKey", "text", false);
    error.SetResponseCode(HttpResponseCode::NOT_FOUND);
    error.SetRemoteHostIpAddress("192.0.2.1");
    error.SetRequestId("RID");
    error.SetResponseHeaders({{"empty", ""}, {"b", "2"}, {"a", "1"}});
    EXPECT_EQ(printed(error),
              "HTTP response code: 404\nResolved remote host IP address: 192.0.2.1\nRequest ID: RID\n"
              "Exception name: NoSuchKey\nError message: text\n3 response headers:\na : 1\nb : 2\nempty : ");
}

TEST(AWSError, KeepsEverythingAsAnotherServicesError) {
    const AWSError<ZooErrors> error = lostLion();
    EXPECT_EQ(error.GetErrorType(), ZooErrors::LION_ESCAPED);
    EXPECT_EQ(error.GetExceptionName(), "LionEscaped");
    EXPECT_EQ(error.GetMessage(), "The gate was open");
    EXPECT_EQ(error.GetResponseCode(), HttpResponseCode::CONFLICT);
    EXPECT_EQ(error.GetRemoteHostIpAddress(), "192.0.2.1");
    EXPECT_EQ(error.GetRequestId(), "RID");
    EXPECT_TRUE(error.ResponseHeaderExists("a"));
    EXPECT_FALSE(error.ResponseHeaderExists("b"));
    EXPECT_TRUE(error.ShouldRetry());
}

TEST(AWSError, ThrottlesOnlyByThatKindOfRetry) {
    EXPECT_TRUE(
        AWSError<CoreErrors>(CoreErrors::SLOW_DOWN, RetryableType::RETRYABLE_THROTTLING).ShouldThrottle());
    EXPECT_TRUE(
        AWSError<CoreErrors>(CoreErrors::SLOW_DOWN, RetryableType::RETRYABLE_THROTTLING).ShouldRetry());
    EXPECT_FALSE(AWSError<CoreErrors>(CoreErrors::SLOW_DOWN, RetryableType::RETRYABLE).ShouldThrottle());
}

TEST(CoreErrors, IsPrintedAsItsNumber) {
    std::ostringstream out;
    out << CoreErrors::NETWORK_CONNECTION;
    EXPECT_EQ(out.str(), "99");
}

struct NamedCase {
    const char* name;
    int type;
    bool retry;
};

class ErrorName : public ::testing::TestWithParam<NamedCase> {};

TEST_P(ErrorName, GivesTypeAndRetry) {
    const auto error = Aws::Client::CoreErrorsMapper::GetErrorForName(GetParam().name);
    EXPECT_EQ(static_cast<int>(error.GetErrorType()), GetParam().type);
    EXPECT_EQ(error.ShouldRetry(), GetParam().retry);
    EXPECT_EQ(error.GetExceptionName(), "");
}

constexpr NamedCase namedCases[] = {
    {"AccessDenied", 15, false},
    {"AccessDeniedException", 15, false},
    {"InternalError", 1, true},
    {"InternalErrorException", 100, false},
    {"InvalidAccessKeyId", 23, false},
    {"SignatureDoesNotMatch", 22, false},
    {"RequestTimeTooSkewed", 20, true},
    {"SlowDown", 19, true},
    {"OptInRequired", 10, false},
    {"OptInRequiredException", 100, false},
    {"Validation", 100, false},
    {"ValidationException", 14, false},
    {"ThrottledException", 13, true},
    {"RequestLimitExceeded", 100, false},
    {"ServiceUnavailable", 12, true},
    {"accessdenied", 100, false},
    {"NoSuchKey", 100, false},
    {"", 100, false},
    {"InternalFailure", 1, true},
    {"InternalFailureException", 1, true},
    {"ServiceUnavailableError", 12, true},
    {"ServiceUnavailableException", 12, true},
    {"ValidationError", 14, false},
    {"ValidationErrorException", 14, false},
};

INSTANTIATE_TEST_SUITE_P(CoreErrors, ErrorName, ::testing::ValuesIn(namedCases));

struct StatusCase {
    int status;
    int type;
    bool retry;
    bool retryWithoutBody;
};

class ErrorStatus : public ::testing::TestWithParam<StatusCase> {};

TEST_P(ErrorStatus, GivesTypeAndRetry) {
    const auto code = static_cast<HttpResponseCode>(GetParam().status);
    const auto error = Aws::Client::CoreErrorsMapper::GetErrorForHttpResponseCode(code);
    EXPECT_EQ(static_cast<int>(error.GetErrorType()), GetParam().type);
    EXPECT_EQ(error.ShouldRetry(), GetParam().retry);
    EXPECT_EQ(error.GetResponseCode(), code);
    EXPECT_EQ(Aws::Http::IsRetryableHttpResponseCode(code), GetParam().retryWithoutBody);
}

constexpr StatusCase statusCases[] = {
    {400, 100, false, false}, {401, 15, false, false}, {402, 100, false, false}, {403, 15, false, false},
    {404, 16, false, false},  {408, 24, true, true},   {416, 100, false, false}, {419, 24, true, true},
    {429, 19, true, true},    {440, 24, true, true},   {499, 100, false, false}, {500, 1, true, true},
    {501, 100, true, false},  {502, 100, true, true},  {503, 12, true, true},    {504, 24, true, true},
    {505, 100, true, false},  {509, 13, true, true},   {510, 100, true, false},  {597, 100, true, false},
    {598, 24, true, true},    {599, 24, true, true},   {600, 100, false, false},
};

INSTANTIATE_TEST_SUITE_P(CoreErrors, ErrorStatus, ::testing::ValuesIn(statusCases));

}  // namespace
