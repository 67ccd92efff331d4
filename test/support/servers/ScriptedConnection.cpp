#include "support/servers/ScriptedConnection.hpp"

#include <algorithm>
#include <array>
#include <charconv>

#include <strings.h>

namespace testsupport {
namespace {

constexpr unsigned char tlsHandshakeRecord = 0x16;

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string_view takeUntil(std::string_view& text, std::string_view separator) {
    const std::size_t end = std::min(text.find(separator), text.size());
    const std::string_view taken = text.substr(0, end);
    text.remove_prefix(std::min(end + separator.size(), text.size()));
    return taken;
}

void parseHead(std::string_view text, SeenRequest& head) {
    std::string_view requestLine = takeUntil(text, "\r\n");
    head.method = takeUntil(requestLine, " ");
    head.target = takeUntil(requestLine, " ");
    head.version = requestLine;
    while (!text.empty()) {
        std::string_view line = takeUntil(text, "\r\n");
        const std::string_view name = takeUntil(line, ":");
        head.headers.emplace_back(name, trimmed(line));
    }
}

std::size_t announcedBodySize(const SeenRequest& head) {
    const std::string text = head.header("Content-Length");
    std::size_t size = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), size);
    return result.ec == std::errc{} ? size : 0;
}

}  // namespace

ScriptedConnection::ScriptedConnection(AcceptedSocket& socket, Conversation& conversation, SSL_CTX* tls,
                                       int number)
    : socket_(socket), conversation_(conversation), tls_(tls), number_(number) {}

void ScriptedConnection::serve(bool tlsFromStart) {
    if (tlsFromStart && !socket_.startTls(*tls_)) return;
    while (serveRequest()) {
    }
}

bool ScriptedConnection::serveRequest() {
    SeenRequest head;
    if (!readHead(head)) return false;
    const bool connect = head.method == "CONNECT";
    const bool expectsContinue = strcasecmp(head.header("Expect").c_str(), "100-continue") == 0;
    bodySize_ = announcedBodySize(head);
    Conversation::Turn turn = conversation_.begin(std::move(head));
    request_ = turn.request;
    return play(turn.script, expectsContinue) && (!connect || enterTunnel());
}

bool ScriptedConnection::readHead(SeenRequest& head) {
    constexpr std::string_view end = "\r\n\r\n";
    std::array<char, 16384> buffer{};
    while (received_.find(end) == std::string::npos) {
        const std::size_t count = socket_.readSome(buffer.data(), buffer.size());
        if (count == 0) return false;
        received_.append(buffer.data(), count);
    }
    const std::size_t size = received_.find(end);
    head.head = received_.substr(0, size);
    parseHead(head.head, head);
    received_.erase(0, size + end.size());
    head.connection = number_;
    head.tls = socket_.isTls();
    return true;
}

bool ScriptedConnection::readBody() {
    std::string body = received_.substr(0, bodySize_);
    received_.erase(0, body.size());
    std::array<char, 65536> buffer{};
    while (body.size() < bodySize_) {
        const std::size_t count =
            socket_.readSome(buffer.data(), std::min(buffer.size(), bodySize_ - body.size()));
        if (count == 0) break;
        body.append(buffer.data(), count);
    }
    const bool complete = body.size() == bodySize_;
    conversation_.recordBody(request_, std::move(body), complete);
    return complete;
}

bool ScriptedConnection::play(const Script& script, bool expectsContinue) {
    const bool bodyFirst = !holds<Step::ReadBody>(script) && !holds<Step::NoReadBody>(script);
    if (bodyFirst && expectsContinue && !socket_.write("HTTP/1.1 100 Continue\r\n\r\n")) return false;
    if (bodyFirst && !readBody()) return false;
    return std::all_of(script.begin(), script.end(), [this](const Step& step) {
        return std::visit([this](const auto& action) { return perform(action); }, step.action);
    });
}

// What follows a granted CONNECT is TLS if it looks like it, else more HTTP.
bool ScriptedConnection::enterTunnel() {
    const bool handshake = tls_ && socket_.peek() == tlsHandshakeRecord;
    return !handshake || socket_.startTls(*tls_);
}

bool ScriptedConnection::perform(const Step::Send& step) {
    for (std::size_t i = 0; i < step.times; ++i)
        if (!socket_.write(step.bytes)) return false;
    return true;
}

bool ScriptedConnection::perform(const Step::SendMade& step) {
    return socket_.write(step.make());
}

bool ScriptedConnection::perform(const Step::Drip& step) {
    for (std::size_t i = 0; i < step.bytes.size(); ++i) {
        if (i > 0 && !socket_.pause(step.each)) return false;
        if (!socket_.write(std::string_view(step.bytes).substr(i, 1))) return false;
    }
    return true;
}

bool ScriptedConnection::perform(const Step::Sleep& step) {
    return socket_.pause(step.duration);
}

bool ScriptedConnection::perform(const Step::ReadBody&) {
    return readBody();
}

bool ScriptedConnection::perform(const Step::NoReadBody&) {
    return true;
}

bool ScriptedConnection::perform(const Step::Close&) {
    return false;
}

bool ScriptedConnection::perform(const Step::Reset&) {
    socket_.reset();
    return false;
}

bool ScriptedConnection::perform(const Step::ConnectReply&) {
    return true;
}

}  // namespace testsupport
