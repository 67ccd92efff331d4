#include <charconv>

#include "FuzzTarget.hpp"
#include "core/Redirects.hpp"
#include "core/RequestChecks.hpp"
#include "core/ServerClock.hpp"
#include "s3/Answer.hpp"
#include "s3/Service.hpp"

using namespace fuzz;
using namespace standin::aws;
using namespace standin::aws::s3;

namespace {

/// Takes the text up to the separator off its beginning, and the separator with it.
std::string_view take(std::string_view& text, std::string_view separator) {
    const auto end = std::min(text.find(separator), text.size());
    const auto taken = text.substr(0, end);
    text.remove_prefix(std::min(text.size(), end + separator.size()));
    return taken;
}

int numberIn(std::string_view text) {
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

std::map<std::string, std::string> headersIn(std::string_view text) {
    std::map<std::string, std::string> headers;
    while (!text.empty()) {
        auto line = take(text, "\n");
        const auto name = take(line, ":");
        headers.emplace(name, line);
    }
    return headers;
}

/// A status, header lines with names in lower case, an empty line, the body.
ExchangeReply replyIn(std::string_view text) {
    ExchangeReply reply;
    reply.status = numberIn(take(text, "\n"));
    reply.headers = headersIn(take(text, "\n\n"));
    reply.body = text;
    return reply;
}

void checkHeaders(const std::map<std::string, std::string>& headers) {
    for (const auto& [name, value] : metadataIn(headers))
        require(headers.at("x-amz-meta-" + name) == value, "metadata is what its header says");
    const auto time = serverTime(headers);
    require(!time || time->WasParseSuccessful(), "a server's time is a time");
}

/// The next attempt, with its credentials, goes to the host an answer names: to no other by a trick.
void checkDirection(const std::string& named) {
    const std::string host = hostOf(named);
    if (!isAuthority(host)) return;
    require(hostOf("https://" + withHost("first.example:9000", host) + "/path") == host,
            "a host can't be read as another");
}

void checkError(const CoreError& error) {
    if (error.GetExceptionName().empty()) return;
    const bool known = error.GetErrorType() != Aws::Client::CoreErrors::UNKNOWN;
    const bool explained = error.GetMessage().find("Unable to parse ExceptionName: ") == 0;
    require(known || explained, "a name that isn't known is told");
    require(known || !error.ShouldRetry(), "an error that isn't known is not retried");
}

void checkJudgement(AnswerBody kind, std::string_view text) {
    ExchangeReply reply = replyIn(text);
    std::unique_ptr<const XmlDocument> document;
    const auto error = judge(kind, reply, document);
    const bool succeeded = reply.status >= 200 && reply.status < 300;
    require(error || succeeded, "a failure's status is a failure");
    require(!error || !succeeded || (kind == AnswerBody::Document && document->root() != nullptr),
            "only a document makes a success a failure");
    if (error) checkError(*error);
    checkHeaders(reply.headers);
    checkDirection(reply.otherHost);
}

}  // namespace

// Whole answers, from status and headers to the error they stand for.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const AnswerBody kind : {AnswerBody::Content, AnswerBody::Document})
        checkJudgement(kind, textOf(data, size));
    return 0;
}
