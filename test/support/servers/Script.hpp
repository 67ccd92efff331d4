#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace testsupport {

using HeaderList = std::vector<std::pair<std::string, std::string>>;

/// One request as a ScriptedServer received it.
struct SeenRequest {
    std::string method;
    std::string target;
    std::string version;
    std::string head;    ///< as it came: the request line and the header lines, without the empty one
    HeaderList headers;  ///< in the order sent, names as sent, values without surrounding blanks
    std::string body;
    bool bodyRead = false;      ///< the script had the body read
    bool bodyComplete = false;  ///< all bytes that Content-Length announced came
    int connection = 0;         ///< the first connection accepted is 1
    bool tls = false;

    /// Value of the first header of that name in any case, "" if there is none.
    std::string header(std::string_view name) const;

    bool hasHeader(std::string_view name) const;
};

/// One step of a reply. A request's body is read before the first step, and `100 Continue` sent at once where
/// the request expects it, unless the script has a readBody() or noReadBody() step.
struct Step {
    struct Send {
        std::string bytes;
        std::size_t times;
    };
    struct SendMade {
        std::function<std::string()> make;
    };
    struct Drip {
        std::string bytes;
        std::chrono::milliseconds each;
    };
    struct Sleep {
        std::chrono::milliseconds duration;
    };
    struct ReadBody {};
    struct NoReadBody {};
    struct Close {};
    struct Reset {};
    struct ConnectReply {};

    static Step send(std::string bytes) { return {Send{std::move(bytes), 1}}; }

    static Step sendRepeat(std::string bytes, std::size_t times) { return {Send{std::move(bytes), times}}; }

    /// Sends what `make` returns at that moment; called on the connection's thread.
    static Step sendMade(std::function<std::string()> make) { return {SendMade{std::move(make)}}; }

    /// Sends byte after byte, with that pause between two.
    static Step drip(std::string bytes, std::chrono::milliseconds each) {
        return {Drip{std::move(bytes), each}};
    }

    /// Ends early, with the whole connection, when the client hangs up.
    static Step sleep(std::chrono::milliseconds duration) { return {Sleep{duration}}; }

    /// Reads the body now, and sends no `100 Continue` by itself.
    static Step readBody() { return {ReadBody{}}; }

    static Step noReadBody() { return {NoReadBody{}}; }

    static Step close() { return {Close{}}; }

    /// Closes with a TCP reset.
    static Step reset() { return {Reset{}}; }

    /// Marks the script as the answer to a CONNECT. Without such a script a CONNECT is granted and uses up
    /// none.
    static Step connectReply() { return {ConnectReply{}}; }

    std::variant<Send, SendMade, Drip, Sleep, ReadBody, NoReadBody, Close, Reset, ConnectReply> action;
};

/// What to do about one request. After the last step the connection stays open for the next request.
using Script = std::vector<Step>;

template <typename Action>
bool holds(const Script& script) {
    for (const Step& step : script)
        if (std::holds_alternative<Action>(step.action)) return true;
    return false;
}

/// A whole HTTP/1.1 response with Content-Length set to the body's size, unless the headers have one.
std::string httpReply(int status, const HeaderList& headers = {}, std::string_view body = {});

}  // namespace testsupport
