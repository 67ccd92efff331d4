#pragma once

#include <aws/core/client/AWSError.h>
#include <aws/s3/S3Errors.h>

#include <optional>
#include <string>

namespace storage::s3provider {

/// The class of the host's exception family that an error becomes.
enum class FailureKind { InvalidCredentials, PermissionDenied, ResourceNotFound };

/// What an S3 error means to the host.
struct Failure {
    FailureKind kind;
    const char16_t* identifier;  ///< the host's error identifier; null: none
};

/// Explains an error by its type, then its exception name, then "404" or "403" in its message. Nothing when
/// none of them does.
std::optional<Failure> explainError(const Aws::Client::AWSError<Aws::S3::S3Errors>& error);

/// Throws the exception that `failure` stands for.
[[noreturn]] void throwFailure(const Failure& failure);

/// The word for an error type in an outcome's summary; "UNKNOWN" for all but a handful.
const char* errorTypeWord(Aws::S3::S3Errors type);

/// An S3 outcome in one line: "Successful operation", or name, type word and message of its error.
template <class Outcome>
std::string describeOutcome(const Outcome& outcome) {
    if (outcome.IsSuccess()) return "Successful operation";
    const auto& error = outcome.GetError();
    return error.GetExceptionName() + "(" + errorTypeWord(error.GetErrorType()) + "):" + error.GetMessage();
}

}  // namespace storage::s3provider
