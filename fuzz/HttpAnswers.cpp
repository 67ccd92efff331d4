#include "HttpAnswers.hpp"

#include <tinyxml2.h>
#include <utf8.h>

#include <algorithm>
#include <optional>
#include <string>

#include "FuzzTarget.hpp"
#include "text/Text.hpp"

namespace fuzz {
namespace {

using s3server::RequestRecord;

constexpr std::string_view interim = "HTTP/1.1 100 Continue\r\n\r\n";

bool isControl(char c) {
    return (static_cast<unsigned char>(c) < 0x20 && c != '\t') || c == 0x7f;
}

bool isTokenCharacter(char c) {
    const bool alphanumeric = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    return alphanumeric || std::string_view("!#$%&'*+-.^_`|~").find(c) != std::string_view::npos;
}

/// Takes answers apart from left to right.
class Answers {
public:
    explicit Answers(std::string_view bytes) : rest_(bytes) {}

    void skipInterim() {
        while (s3server::startsWith(rest_, interim))
            rest_.remove_prefix(interim.size());
    }
    std::string_view line() {
        const auto end = rest_.find("\r\n");
        require(end != std::string_view::npos, "a line ends");
        const auto line = rest_.substr(0, end);
        rest_.remove_prefix(end + 2);
        require(std::none_of(line.begin(), line.end(), isControl), "a line holds no control character");
        return line;
    }
    std::string_view bytes(std::uint64_t count) {
        require(count <= rest_.size(), "a body is as long as announced");
        const auto bytes = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return bytes;
    }
    bool atEnd() const { return rest_.empty(); }

private:
    std::string_view rest_;
};

void checkStatusLine(std::string_view line, int status) {
    const std::string start = "HTTP/1.1 " + std::to_string(status) + ' ';
    require(s3server::startsWith(line, start), "an answer begins with its status");
    require(status >= 100 && status <= 999, "a status has three digits");
    require(status != 500, "the server isn't surprised by a request");
}

/// The length that the header lines announce.
std::optional<std::uint64_t> readHead(Answers& answers) {
    std::optional<std::uint64_t> length;
    for (auto line = answers.line(); !line.empty(); line = answers.line()) {
        const auto [name, value] = s3server::splitAtFirst(line, ':');
        require(name.size() < line.size() && !name.empty(), "a header line has a name");
        require(std::all_of(name.begin(), name.end(), isTokenCharacter), "a header's name is a token");
        if (s3server::lowered(name) != "content-length") continue;
        require(!length, "a length is announced once");
        length = s3server::parseNumber(s3server::trimmed(value));
        require(length.has_value(), "a length is a number");
    }
    return length;
}

void checkErrorDocument(std::string_view text) {
    require(utf8::is_valid(text.begin(), text.end()), "an error's document is UTF-8");
    tinyxml2::XMLDocument document;
    require(document.Parse(text.data(), text.size()) == tinyxml2::XML_SUCCESS, "an error's document is XML");
    require(document.RootElement()->Name() == std::string_view("Error"), "an error's document is an Error");
}

void requireAnswer(Answers& answers, const RequestRecord& request) {
    checkStatusLine(answers.line(), request.status);
    const auto length = readHead(answers);
    if (request.method == "HEAD" || request.status == 204 || request.status == 304) return;
    require(length && *length == request.responseBytes, "a body's length is announced");
    const auto body = answers.bytes(*length);
    if (request.status >= 300) checkErrorDocument(body);
}

}  // namespace

void requireAnswers(std::string_view bytes, const std::vector<RequestRecord>& requests) {
    Answers answers(bytes);
    for (const RequestRecord& request : requests) {
        answers.skipInterim();
        requireAnswer(answers, request);
    }
    answers.skipInterim();
    require(answers.atEnd(), "nothing is answered that wasn't asked");
}

}  // namespace fuzz
