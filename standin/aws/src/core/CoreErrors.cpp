#include <aws/core/client/CoreErrors.h>

#include <algorithm>
#include <iterator>
#include <ostream>
#include <string_view>

namespace Aws::Client {
namespace {

struct NamedError {
    std::string_view name;
    CoreErrors type;
    bool retryable;
};

constexpr NamedError namedErrors[] = {
    {"AccessDenied", CoreErrors::ACCESS_DENIED, false},
    {"AccessDeniedException", CoreErrors::ACCESS_DENIED, false},
    {"IncompleteSignature", CoreErrors::INCOMPLETE_SIGNATURE, false},
    {"IncompleteSignatureException", CoreErrors::INCOMPLETE_SIGNATURE, false},
    {"InternalError", CoreErrors::INTERNAL_FAILURE, true},
    {"InternalFailure", CoreErrors::INTERNAL_FAILURE, true},
    {"InternalFailureException", CoreErrors::INTERNAL_FAILURE, true},
    {"InternalServerError", CoreErrors::INTERNAL_FAILURE, true},
    {"InvalidAccessKeyId", CoreErrors::INVALID_ACCESS_KEY_ID, false},
    {"InvalidAccessKeyIdException", CoreErrors::INVALID_ACCESS_KEY_ID, false},
    {"InvalidAction", CoreErrors::INVALID_ACTION, false},
    {"InvalidActionException", CoreErrors::INVALID_ACTION, false},
    {"InvalidClientTokenId", CoreErrors::INVALID_CLIENT_TOKEN_ID, false},
    {"InvalidClientTokenIdException", CoreErrors::INVALID_CLIENT_TOKEN_ID, false},
    {"InvalidParameterCombination", CoreErrors::INVALID_PARAMETER_COMBINATION, false},
    {"InvalidParameterCombinationException", CoreErrors::INVALID_PARAMETER_COMBINATION, false},
    {"InvalidParameterValue", CoreErrors::INVALID_PARAMETER_VALUE, false},
    {"InvalidParameterValueException", CoreErrors::INVALID_PARAMETER_VALUE, false},
    {"InvalidQueryParameter", CoreErrors::INVALID_QUERY_PARAMETER, false},
    {"InvalidQueryParameterException", CoreErrors::INVALID_QUERY_PARAMETER, false},
    {"InvalidSignature", CoreErrors::INVALID_SIGNATURE, false},
    {"InvalidSignatureException", CoreErrors::INVALID_SIGNATURE, false},
    {"MalformedQueryString", CoreErrors::MALFORMED_QUERY_STRING, false},
    {"MalformedQueryStringException", CoreErrors::MALFORMED_QUERY_STRING, false},
    {"MissingAction", CoreErrors::MISSING_ACTION, false},
    {"MissingActionException", CoreErrors::MISSING_ACTION, false},
    {"MissingAuthenticationToken", CoreErrors::MISSING_AUTHENTICATION_TOKEN, false},
    {"MissingAuthenticationTokenException", CoreErrors::MISSING_AUTHENTICATION_TOKEN, false},
    {"MissingParameter", CoreErrors::MISSING_PARAMETER, false},
    {"MissingParameterException", CoreErrors::MISSING_PARAMETER, false},
    {"OptInRequired", CoreErrors::OPT_IN_REQUIRED, false},
    {"RequestExpired", CoreErrors::REQUEST_EXPIRED, true},
    {"RequestExpiredException", CoreErrors::REQUEST_EXPIRED, true},
    {"RequestThrottled", CoreErrors::THROTTLING, true},
    {"RequestThrottledException", CoreErrors::THROTTLING, true},
    {"RequestTimeTooSkewed", CoreErrors::REQUEST_TIME_TOO_SKEWED, true},
    {"RequestTimeTooSkewedException", CoreErrors::REQUEST_TIME_TOO_SKEWED, true},
    {"RequestTimeout", CoreErrors::REQUEST_TIMEOUT, true},
    {"RequestTimeoutException", CoreErrors::REQUEST_TIMEOUT, true},
    {"ResourceNotFound", CoreErrors::RESOURCE_NOT_FOUND, false},
    {"ResourceNotFoundException", CoreErrors::RESOURCE_NOT_FOUND, false},
    {"ServiceUnavailable", CoreErrors::SERVICE_UNAVAILABLE, true},
    {"ServiceUnavailableError", CoreErrors::SERVICE_UNAVAILABLE, true},
    {"ServiceUnavailableException", CoreErrors::SERVICE_UNAVAILABLE, true},
    {"SignatureDoesNotMatch", CoreErrors::SIGNATURE_DOES_NOT_MATCH, false},
    {"SignatureDoesNotMatchException", CoreErrors::SIGNATURE_DOES_NOT_MATCH, false},
    {"SlowDown", CoreErrors::SLOW_DOWN, true},
    {"SlowDownException", CoreErrors::SLOW_DOWN, true},
    {"ThrottledException", CoreErrors::THROTTLING, true},
    {"Throttling", CoreErrors::THROTTLING, true},
    {"ThrottlingException", CoreErrors::THROTTLING, true},
    {"UnrecognizedClient", CoreErrors::UNRECOGNIZED_CLIENT, false},
    {"UnrecognizedClientException", CoreErrors::UNRECOGNIZED_CLIENT, false},
    {"ValidationError", CoreErrors::VALIDATION, false},
    {"ValidationErrorException", CoreErrors::VALIDATION, false},
    {"ValidationException", CoreErrors::VALIDATION, false},
};

struct StatusError {
    int first;
    int last;
    CoreErrors type;
    bool retryable;
};

// The first row that holds the code decides.
constexpr StatusError statusErrors[] = {
    {401, 401, CoreErrors::ACCESS_DENIED, false},
    {403, 403, CoreErrors::ACCESS_DENIED, false},
    {404, 404, CoreErrors::RESOURCE_NOT_FOUND, false},
    {408, 408, CoreErrors::REQUEST_TIMEOUT, true},
    {419, 419, CoreErrors::REQUEST_TIMEOUT, true},
    {429, 429, CoreErrors::SLOW_DOWN, true},
    {440, 440, CoreErrors::REQUEST_TIMEOUT, true},
    {500, 500, CoreErrors::INTERNAL_FAILURE, true},
    {503, 503, CoreErrors::SERVICE_UNAVAILABLE, true},
    {504, 504, CoreErrors::REQUEST_TIMEOUT, true},
    {509, 509, CoreErrors::THROTTLING, true},
    {598, 599, CoreErrors::REQUEST_TIMEOUT, true},
    {500, 599, CoreErrors::UNKNOWN, true},
};

}  // namespace

Aws::OStream& operator<<(Aws::OStream& out, CoreErrors error) {
    return out << static_cast<int>(error);
}

AWSError<CoreErrors> CoreErrorsMapper::GetErrorForName(const char* errorName) {
    const std::string_view name = errorName;
    const auto* row = std::find_if(std::begin(namedErrors), std::end(namedErrors),
                                   [name](const NamedError& error) { return error.name == name; });
    if (row == std::end(namedErrors)) return {CoreErrors::UNKNOWN, false};
    return {row->type, row->retryable};
}

AWSError<CoreErrors> CoreErrorsMapper::GetErrorForHttpResponseCode(Aws::Http::HttpResponseCode code) {
    const int status = static_cast<int>(code);
    const auto* row = std::find_if(
        std::begin(statusErrors), std::end(statusErrors),
        [status](const StatusError& error) { return error.first <= status && status <= error.last; });
    AWSError<CoreErrors> error = row == std::end(statusErrors)
                                     ? AWSError<CoreErrors>(CoreErrors::UNKNOWN, false)
                                     : AWSError<CoreErrors>(row->type, row->retryable);
    error.SetResponseCode(code);
    return error;
}

}  // namespace Aws::Client
