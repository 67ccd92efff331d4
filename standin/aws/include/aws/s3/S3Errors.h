#pragma once

#include <aws/core/client/AWSError.h>
#include <aws/core/client/CoreErrors.h>

namespace Aws::S3 {

/// Every service's errors under the numbers of CoreErrors, then S3's own.
enum class S3Errors {
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

    BUCKET_ALREADY_EXISTS = 129,
    BUCKET_ALREADY_OWNED_BY_YOU = 130,
    INVALID_OBJECT_STATE = 131,
    NO_SUCH_BUCKET = 132,
    NO_SUCH_KEY = 133,
    NO_SUCH_UPLOAD = 134,
    OBJECT_ALREADY_IN_ACTIVE_TIER = 135,
    OBJECT_NOT_IN_ACTIVE_TIER = 136
};

/// An error of an S3 operation, whether the service's or the client's own.
class S3Error : public Aws::Client::AWSError<S3Errors> {
public:
    S3Error() = default;
    using Aws::Client::AWSError<S3Errors>::AWSError;
    S3Error(const Aws::Client::AWSError<S3Errors>& error)
        : AWSError(error) {}  // NOLINT(google-explicit-constructor)
};

namespace S3ErrorMapper {

/// Type and retryability of an error S3 names, such as "NoSuchKey", a name of every service's included;
/// UNKNOWN and not retryable for any other. Letter case matters. Name and message are left empty.
Aws::Client::AWSError<Aws::Client::CoreErrors> GetErrorForName(const char* errorName);

}  // namespace S3ErrorMapper

}  // namespace Aws::S3
