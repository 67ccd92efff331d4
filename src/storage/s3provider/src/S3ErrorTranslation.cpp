#include "S3ErrorTranslation.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <storage/cloudprovider/CloudException.hpp>
#include <string_view>

namespace storage::s3provider {

using Aws::S3::S3Errors;
using foundation::storage::provider::ExceptionContext;

namespace {

constexpr const char* anyOtherType = "UNKNOWN";

struct TypeRow {
    S3Errors type;
    const char* word;
    Failure failure;
};

constexpr TypeRow rowsByType[] = {
    {S3Errors::INVALID_CLIENT_TOKEN_ID,
     "INVALID_CLIENT_TOKEN_ID",
     {FailureKind::InvalidCredentials, u"invalid_client_token_id"}},
    {S3Errors::MISSING_AUTHENTICATION_TOKEN,
     "MISSING_AUTHENTICATION_TOKEN",
     {FailureKind::InvalidCredentials, u"missing_authentication_token"}},
    {S3Errors::ACCESS_DENIED, "ACCESS_DENIED", {FailureKind::PermissionDenied, u"access_denied"}},
    // It has a meaning but no word: outcomes call it what they call any other type.
    {S3Errors::RESOURCE_NOT_FOUND, anyOtherType, {FailureKind::ResourceNotFound, nullptr}},
    {S3Errors::NO_SUCH_BUCKET, "NO_SUCH_BUCKET", {FailureKind::ResourceNotFound, u"no_such_bucket"}},
    {S3Errors::NO_SUCH_KEY, "NO_SUCH_KEY", {FailureKind::ResourceNotFound, u"no_such_key"}},
};

struct TextRow {
    std::string_view text;
    Failure failure;
};

// Permission and not credentials, unlike the two token errors above: hosts rely on the difference.
constexpr TextRow failuresByExceptionName[] = {
    {"InvalidAccessKeyId", {FailureKind::PermissionDenied, u"invalid_access_key_id"}},
    {"SignatureDoesNotMatch", {FailureKind::PermissionDenied, u"signature_does_not_match"}},
};

constexpr TextRow failuresByMessagePart[] = {
    {"404", {FailureKind::ResourceNotFound, nullptr}},
    {"403", {FailureKind::PermissionDenied, nullptr}},
};

// Null without a match.
template <class Row, std::size_t Size, class Matches>
const Row* firstMatch(const Row (&rows)[Size], Matches matches) {
    const auto* row = std::find_if(std::begin(rows), std::end(rows), matches);
    return row == std::end(rows) ? nullptr : row;
}

const TypeRow* rowOf(S3Errors type) {
    return firstMatch(rowsByType, [&](const TypeRow& row) { return row.type == type; });
}

std::optional<ExceptionContext> contextOf(const Failure& failure) {
    if (!failure.identifier) return std::nullopt;
    return ExceptionContext(failure.identifier);
}

}  // namespace

std::optional<Failure> explainError(const Aws::Client::AWSError<S3Errors>& error) {
    if (const auto* row = rowOf(error.GetErrorType())) return row->failure;
    const std::string_view name = error.GetExceptionName();
    const auto isName = [&](const TextRow& row) { return row.text == name; };
    if (const auto* row = firstMatch(failuresByExceptionName, isName)) return row->failure;
    const std::string_view message = error.GetMessage();
    const auto isPart = [&](const TextRow& row) { return message.find(row.text) != std::string_view::npos; };
    if (const auto* row = firstMatch(failuresByMessagePart, isPart)) return row->failure;
    return std::nullopt;
}

void throwFailure(const Failure& failure) {
    using namespace storage::cloudprovider;
    switch (failure.kind) {
        case FailureKind::InvalidCredentials:
            throw InvalidCredentialsException(contextOf(failure));
        case FailureKind::PermissionDenied:
            throw PermissionDeniedException(contextOf(failure));
        case FailureKind::ResourceNotFound:
            throw ResourceNotFoundException(contextOf(failure));
    }
    throw UnknownErrorException(std::nullopt);
}

const char* errorTypeWord(S3Errors type) {
    const auto* const row = rowOf(type);
    return row == nullptr ? anyOtherType : row->word;
}

}  // namespace storage::s3provider
