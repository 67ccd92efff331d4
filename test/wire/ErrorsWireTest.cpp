#include "wire/WireTable.hpp"

using namespace testsupport;

namespace {

/// An error as S3 sends it, and the exception that the host gets for it.
struct ErrorRow {
    const char* name;
    int status;
    const char* code;
    const char* message;
    const char* outcome;
};

constexpr ErrorRow explained[] = {
    {"NoSuchKey", 404, "NoSuchKey", "gone", "ResourceNotFoundException(no_such_key)"},
    {"NoSuchBucket", 404, "NoSuchBucket", "gone", "ResourceNotFoundException(no_such_bucket)"},
    {"AccessDenied", 403, "AccessDenied", "no", "PermissionDeniedException(access_denied)"},
    {"InvalidClientTokenId", 403, "InvalidClientTokenId", "no",
     "InvalidCredentialsException(invalid_client_token_id)"},
    {"MissingAuthenticationToken", 403, "MissingAuthenticationToken", "no",
     "InvalidCredentialsException(missing_authentication_token)"},
    {"InvalidAccessKeyId", 403, "InvalidAccessKeyId", "no",
     "PermissionDeniedException(invalid_access_key_id)"},
    {"SignatureDoesNotMatch", 403, "SignatureDoesNotMatch", "no",
     "PermissionDeniedException(signature_does_not_match)"},
};

WireCase removal(const ErrorRow& row) {
    const auto answer = errorReply(row.status, row.code, row.message);
    return {row.name,
            [](auto& client) -> std::string {
                client.remove("k");
                return "removed";
            },
            {{"DELETE /b/k", answer.reply}},
            row.outcome,
            {"2  m_bucket=b key=k", answer.record}};
}

// A code the SDK doesn't know: its own words around the code and the message.
ErrorReply unknownError(int status, const std::string& code, const std::string& message) {
    auto answer = errorReply(status, code, message);
    const auto body = errorBody(code, message);
    answer.record =
        failureRecord(status, "REQ1", code, "Unable to parse ExceptionName: " + code + " Message: " + message,
                      {{"Content-Type", "application/xml"}, {"Content-Length", std::to_string(body.size())}});
    return answer;
}

WireCase unexplainedRemoval(const std::string& name, const ErrorReply& failure,
                            const std::string& locationReply, const std::string& outcome) {
    return {name,
            [](auto& client) -> std::string {
                client.remove("k");
                return "removed";
            },
            {{"DELETE /b/k", failure.reply}, {"GET /b?location", locationReply}},
            outcome,
            {"2  m_bucket=b key=k", failure.record}};
}

std::vector<WireCase> errorConversations() {
    std::vector<WireCase> all;
    for (const auto& row : explained)
        all.push_back(removal(row));

    auto in404 = unknownError(400, "OddCode", "upstream said 404");
    auto by404 =
        removal({"MessageWith404", 400, "OddCode", "upstream said 404", "ResourceNotFoundException(none)"});
    by404.log[1] = in404.record;
    all.push_back(by404);

    const auto odd = unknownError(418, "OddCode", "short and stout");
    all.push_back(unexplainedRemoval("UnexplainedInTheRightRegion", odd, locationReply("eu-west-3"),
                                     "UnknownErrorException(none)"));
    all.push_back(unexplainedRemoval("UnexplainedInAnotherRegion", odd, locationReply("us-west-2"),
                                     "InvalidLocationException(bad_region)"));
    all.push_back(unexplainedRemoval("UnexplainedInABucketWithoutLocation", odd, locationReply(""),
                                     "InvalidLocationException(bad_region)"));
    all.push_back(unexplainedRemoval("UnexplainedAndTheLocationRefused", odd,
                                     errorReply(403, "AccessDenied", "no").reply,
                                     "UnknownErrorException(none)"));
    return all;
}

}  // namespace

class ErrorsOnTheWire : public ::testing::TestWithParam<WireCase> {};

TEST_P(ErrorsOnTheWire, BecomeOneException) {
    expectConversation(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Errors, ErrorsOnTheWire, ::testing::ValuesIn(errorConversations()),
                         [](const auto& row) { return row.param.name; });
