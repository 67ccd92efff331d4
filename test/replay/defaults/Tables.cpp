#include "replay/Outcomes.hpp"
#include "replay/defaults/Observers.hpp"
#include "replay/defaults/Setting.hpp"

#include <aws/core/client/CoreErrors.h>
#include <aws/core/http/HttpResponse.h>
#include <aws/core/utils/DateTime.h>
#include <aws/s3/S3Errors.h>
#include <aws/s3/model/BucketLocationConstraint.h>
#include <aws/s3/model/EncodingType.h>
#include <aws/s3/model/HeadObjectResult.h>

#include <sstream>
#include <stdexcept>

namespace replay {
namespace {

using Aws::Client::CoreErrors;
using Aws::Client::CoreErrorsMapper::GetErrorForHttpResponseCode;
using Aws::Http::HttpResponseCode;
using Aws::S3::S3Error;
using Aws::Utils::DateFormat;
using Aws::Utils::DateTime;
using namespace Aws::S3::Model;

constexpr int firstCode = 100;
constexpr int lastCode = 599;

std::string retriedCodes() {
    std::string list;
    for (int code = firstCode; code <= lastCode; ++code)
        if (Aws::Http::IsRetryableHttpResponseCode(static_cast<HttpResponseCode>(code)))
            list += (list.empty() ? "" : ",") + std::to_string(code);
    return list;
}

Json errorByCode(int code) {
    const auto error = GetErrorForHttpResponseCode(static_cast<HttpResponseCode>(code));
    return {{"from", code},
            {"to", code},
            {"type", static_cast<int>(error.GetErrorType())},
            {"retry", error.ShouldRetry()}};
}

bool isUsual(const Json& error) {
    return error["type"] == static_cast<int>(CoreErrors::UNKNOWN) && error["retry"] == false;
}

/// Ranges of codes with the same error; those with the usual one are left out.
Json errorsByCode() {
    Json ranges = Json::array();
    for (int code = firstCode; code <= lastCode; ++code) {
        Json error = errorByCode(code);
        if (isUsual(error)) continue;
        const bool continues = !ranges.empty() && ranges.back()["to"] == code - 1 &&
                               ranges.back()["type"] == error["type"] &&
                               ranges.back()["retry"] == error["retry"];
        if (continues)
            ranges.back()["to"] = code;
        else
            ranges.push_back(std::move(error));
    }
    return ranges;
}

Aws::Client::AWSError<CoreErrors> errorNamed(const char* name) {
    const auto error = Aws::S3::S3ErrorMapper::GetErrorForName(name);
    const bool known = error.GetErrorType() != CoreErrors::UNKNOWN;
    return known ? error : Aws::Client::CoreErrorsMapper::GetErrorForName(name);
}

Json errorsByName(const Json& recorded) {
    Json errors = Json::object();
    for (const auto& [name, row] : recorded.items()) {
        const auto error = errorNamed(name.c_str());
        errors[name] = {{"type", static_cast<int>(error.GetErrorType())},
                        {"retry", error.ShouldRetry()},
                        {"throttle", error.ShouldThrottle()}};
    }
    return errors;
}

Json locationsByNumber(const Json& recorded) {
    Json names = Json::object();
    for (const auto& [number, name] : recorded.items())
        names[number] = BucketLocationConstraintMapper::GetNameForBucketLocationConstraint(
            static_cast<BucketLocationConstraint>(std::stoi(number)));
    return names;
}

template <typename Printable>
std::string printed(const Printable& value) {
    std::ostringstream out;
    out << value;
    return out.str();
}

S3Error handMadeError() {
    S3Error error(
        Aws::Client::AWSError<Aws::S3::S3Errors>(Aws::S3::S3Errors::NO_SUCH_KEY, "NoSuchKey", "text", false));
    error.SetResponseCode(HttpResponseCode::NOT_FOUND);
    error.SetRemoteHostIpAddress("192.0.2.1");
    error.SetRequestId("RID");
    error.SetResponseHeaders({{"b", "2"}, {"a", "1"}, {"empty", ""}});
    return error;
}

}  // namespace

Json observeTable(const Json& recorded) {
    const Setting setting(recorded);
    const Json& observed = recorded["observed"];
    const std::string about = recorded["note"];
    if (about.rfind("HTTP codes", 0) == 0)
        return {{"retried_without_body", retriedCodes()}, {"body_not_understood", errorsByCode()}};
    if (about.rfind("error names", 0) == 0) return errorsByName(observed);
    if (about.rfind("location constraint", 0) == 0) return locationsByNumber(observed);
    if (about.rfind("name of EncodingType", 0) == 0)
        return EncodingTypeMapper::GetNameForEncodingType(EncodingType::url);
    throw std::runtime_error("unknown table: " + about);
}

Json observeValues(const Json& recorded) {
    const Setting setting(recorded);
    const S3Error error;
    const HeadObjectOutcome outcome;
    const DateTime time;
    return {{"default_constructed_error",
             {{"type", static_cast<int>(error.GetErrorType())},
              {"exception_name", error.GetExceptionName()},
              {"message", error.GetMessage()},
              {"http_code", static_cast<int>(error.GetResponseCode())},
              {"should_retry", error.ShouldRetry()},
              {"text", printed(error)}}},
            {"default_constructed_outcome",
             {{"success", outcome.IsSuccess()},
              {"type", static_cast<int>(outcome.GetError().GetErrorType())},
              {"http_code", static_cast<int>(outcome.GetError().GetResponseCode())}}},
            {"hand_made_error_text", printed(handMadeError())},
            {"core_error_99_printed", printed(CoreErrors::NETWORK_CONNECTION)},
            {"default_datetime_ms", time.Millis()},
            {"default_datetime_ok", time.WasParseSuccessful()}};
}

Json observeDateParsing(const Json& recorded) {
    const Setting setting(recorded);
    const std::string text = recorded["text"];
    const DateTime rfc822(text, DateFormat::RFC822);
    const DateTime iso8601(text, DateFormat::ISO_8601);
    const DateTime automatic(text, DateFormat::AutoDetect);
    return {{"rfc822", rfc822.Millis()},   {"rfc822_ok", rfc822.WasParseSuccessful()},
            {"iso8601", iso8601.Millis()}, {"iso8601_ok", iso8601.WasParseSuccessful()},
            {"auto", automatic.Millis()},  {"auto_ok", automatic.WasParseSuccessful()}};
}

}  // namespace replay
