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

struct TypeRow {
    S3Errors type;
    Failure failure;
};

constexpr TypeRow failuresByType[] = {
    {S3Errors::INVALID_CLIENT_TOKEN_ID, {FailureKind::InvalidCredentials, u"invalid_client_token_id"}},
    {S3Errors::MISSING_AUTHENTICATION_TOKEN,
     {FailureKind::InvalidCredentials, u"missing_authentication_token"}},
    {S3Errors::ACCESS_DENIED, {FailureKind::PermissionDenied, u"access_denied"}},
    {S3Errors::RESOURCE_NOT_FOUND, {FailureKind::ResourceNotFound, nullptr}},
    {S3Errors::NO_SUCH_BUCKET, {FailureKind::ResourceNotFound, u"no_such_bucket"}},
    {S3Errors::NO_SUCH_KEY, {FailureKind::ResourceNotFound, u"no_such_key"}},
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

struct WordRow {
    S3Errors type;
    const char* word;
};

constexpr WordRow typeWords[] = {
    {S3Errors::INVALID_CLIENT_TOKEN_ID, "INVALID_CLIENT_TOKEN_ID"},
    {S3Errors::MISSING_AUTHENTICATION_TOKEN, "MISSING_AUTHENTICATION_TOKEN"},
    {S3Errors::ACCESS_DENIED, "ACCESS_DENIED"},
    {S3Errors::NO_SUCH_BUCKET, "NO_SUCH_BUCKET"},
    {S3Errors::NO_SUCH_KEY, "NO_SUCH_KEY"},
};

template <class Row, std::size_t Size, class Matches>
std::optional<Failure> firstMatch(const Row (&rows)[Size], Matches matches) {
    const auto* row = std::find_if(std::begin(rows), std::end(rows), matches);
    return row == std::end(rows) ? std::nullopt : std::optional<Failure>(row->failure);
}

std::optional<ExceptionContext> contextOf(const Failure& failure) {
    if (!failure.identifier) return std::nullopt;
    return ExceptionContext(failure.identifier);
}

}  // namespace

std::optional<Failure> explainError(const Aws::Client::AWSError<S3Errors>& error) {
    const auto type = error.GetErrorType();
    if (auto failure = firstMatch(failuresByType, [&](const TypeRow& row) { return row.type == type; })) {
        return failure;
    }
    const std::string_view name = error.GetExceptionName();
    if (auto failure =
            firstMatch(failuresByExceptionName, [&](const TextRow& row) { return row.text == name; })) {
        return failure;
    }
    const std::string_view message = error.GetMessage();
    return firstMatch(failuresByMessagePart,
                      [&](const TextRow& row) { return message.find(row.text) != std::string_view::npos; });
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
    const auto* row = std::find_if(std::begin(typeWords), std::end(typeWords),
                                   [&](const WordRow& candidate) { return candidate.type == type; });
    return row == std::end(typeWords) ? "UNKNOWN" : row->word;
}

}  // namespace storage::s3provider
