#pragma once

#include <aws/core/client/AWSError.h>
#include <aws/core/http/HttpResponse.h>
#include <aws/core/utils/memory/stl/AWSStreamFwd.h>

namespace Aws::Client {

/// Errors that every service can give. A service's own follow from SERVICE_EXTENSION_START_RANGE.
enum class CoreErrors {
    INCOMPLETE_SIGNATURE = 0,
    INTERNAL_FAILURE = 1,
    INVALID_ACTION = 2,
    INVALID_CLIENT_TOKEN_ID = 3,
    INVALID_PARAMETER_COMBINATION = 4,
    INVALID_QUERY_PARAMETER = 5,
    INVALID_PARAMETER_VALUE = 6,
    MISSING_ACTION = 7,
    MISSING_AUTHENTICATION_TOKEN = 8,
    MISSING_PARAMETER = 9,
    OPT_IN_REQUIRED = 10,
    REQUEST_EXPIRED = 11,
    SERVICE_UNAVAILABLE = 12,
    THROTTLING = 13,
    VALIDATION = 14,
    ACCESS_DENIED = 15,
    RESOURCE_NOT_FOUND = 16,
    UNRECOGNIZED_CLIENT = 17,
    MALFORMED_QUERY_STRING = 18,
    SLOW_DOWN = 19,
    REQUEST_TIME_TOO_SKEWED = 20,
    INVALID_SIGNATURE = 21,
    SIGNATURE_DOES_NOT_MATCH = 22,
    INVALID_ACCESS_KEY_ID = 23,
    REQUEST_TIMEOUT = 24,
    NETWORK_CONNECTION = 99,
    UNKNOWN = 100,
    CLIENT_SIGNING_FAILURE = 101,
    USER_CANCELLED = 102,
    ENDPOINT_RESOLUTION_FAILURE = 103,
    SERVICE_EXTENSION_START_RANGE = 128
};

/// The number.
Aws::OStream& operator<<(Aws::OStream& out, CoreErrors error);

namespace CoreErrorsMapper {

/// Type and retryability of an error a service names, such as "AccessDenied"; UNKNOWN and not retryable
/// for a name that is not every service's. Name and message are left empty.
AWSError<CoreErrors> GetErrorForName(const char* errorName);

/// Type and retryability by the status alone, for an answer whose body says nothing understandable.
AWSError<CoreErrors> GetErrorForHttpResponseCode(Aws::Http::HttpResponseCode code);

}  // namespace CoreErrorsMapper

}  // namespace Aws::Client
