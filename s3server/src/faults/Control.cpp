#include "faults/Control.hpp"

#include <algorithm>
#include <array>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>
#include <sstream>
#include <stdexcept>

#include "http/ReadStream.hpp"
#include "text/Text.hpp"

namespace s3server {
namespace {

namespace http = boost::beast::http;

constexpr std::uint64_t largestBody = 1U << 20U;

/// A fault a line; empty lines are none. Throws std::invalid_argument that names the line.
std::vector<Fault> parseFaults(std::string_view body) {
    std::vector<Fault> faults;
    for (const std::string_view line : split(body, '\n')) {
        const std::string_view text = trimmed(line.substr(0, line.find_last_not_of('\r') + 1));
        if (text.empty()) continue;
        try {
            faults.push_back(Fault::parse(text));
        } catch (const std::invalid_argument& error) {
            throw std::invalid_argument(std::string(text) + ": " + error.what());
        }
    }
    return faults;
}

std::string planned(const Controlled& controlled) {
    std::string lines;
    for (const Fault& fault : controlled.faults.faults())
        lines += fault.text() + '\n';
    return lines;
}

std::string counted(const Controlled& controlled) {
    std::string lines;
    for (const auto& [request, count] : controlled.log.counts()) {
        const auto& [operation, status] = request;
        lines += (operation.empty() ? "-" : operation) + ' ' + std::to_string(status) + ' ' +
                 std::to_string(count) + '\n';
    }
    return lines;
}

struct Action {
    std::string_view method;
    std::string_view target;
    void (*perform)(const Controlled& controlled, std::string_view body);
};

constexpr std::array actions{
    Action{"GET", "/faults", [](const Controlled&, std::string_view) {}},
    Action{"POST", "/faults",
           [](const Controlled& on, std::string_view body) { on.faults.add(parseFaults(body)); }},
    Action{"PUT", "/faults",
           [](const Controlled& on, std::string_view body) { on.faults.replace(parseFaults(body)); }},
    Action{"DELETE", "/faults", [](const Controlled& on, std::string_view) { on.faults.replace({}); }},
    Action{"GET", "/requests", [](const Controlled&, std::string_view) {}},
    Action{"DELETE", "/requests", [](const Controlled& on, std::string_view) { on.log.forget(); }},
};

struct Resource {
    std::string_view target;
    std::string_view methods;
    std::string (*tell)(const Controlled& controlled);
};

constexpr std::array resources{
    Resource{"/faults", "GET, POST, PUT, DELETE", planned},
    Resource{"/requests", "GET, DELETE", counted},
};

/// Beast has string views of its own.
template <class View>
std::string_view viewOf(const View& view) {
    return {view.data(), view.size()};
}

std::string textOf(const ControlResponse& response, bool keepAlive, unsigned version) {
    http::response<http::string_body> message{static_cast<http::status>(response.status), version};
    message.set(http::field::content_type, "text/plain; charset=utf-8");
    if (!response.allowed.empty()) message.set(http::field::allow, std::string(response.allowed));
    message.keep_alive(keepAlive);
    message.body() = response.body;
    message.prepare_payload();
    std::ostringstream text;
    text << message;
    return text.str();
}

/// False when the connection is to end.
bool serveOne(ReadStream& stream, boost::beast::flat_buffer& buffer, const Controlled& controlled) {
    http::request_parser<http::string_body> parser;
    parser.body_limit(largestBody);
    boost::system::error_code error;
    http::read_header(stream, buffer, parser, error);
    if (!error && lowered(viewOf(parser.get()[http::field::expect])) == "100-continue")
        stream.wire.write("HTTP/1.1 100 Continue\r\n\r\n");
    if (!error) http::read(stream, buffer, parser, error);
    if (error == http::error::end_of_stream || error == boost::asio::error::eof ||
        error == http::error::partial_message)
        return false;
    if (error) {
        stream.wire.write(textOf({400, error.message() + '\n'}, false, 11));
        return false;
    }
    const auto& request = parser.get();
    ControlResponse response =
        control(viewOf(request.method_string()), viewOf(request.target()), request.body(), controlled);
    if (request.method() == http::verb::head) response.body.clear();
    const std::string text = textOf(response, request.keep_alive(), request.version());
    return stream.wire.write(text) == text.size() && request.keep_alive();
}

}  // namespace

ControlResponse control(std::string_view method, std::string_view target, std::string_view body,
                        const Controlled& controlled) {
    const auto* const resource = std::find_if(resources.begin(), resources.end(),
                                              [target](const auto& each) { return each.target == target; });
    if (resource == resources.end()) return {404, "there are /faults and /requests\n"};
    const auto* const action = std::find_if(
        actions.begin(), actions.end(),
        [method, target](const auto& each) { return each.method == method && each.target == target; });
    if (action == actions.end()) return {405, std::string(resource->methods) + '\n', resource->methods};
    try {
        action->perform(controlled, body);
    } catch (const std::invalid_argument& refusal) {
        return {400, std::string(refusal.what()) + '\n'};
    }
    return {200, resource->tell(controlled)};
}

void serveControl(Wire& wire, const Controlled& controlled) {
    if (!wire.open()) return wire.close();
    try {
        ReadStream stream{wire};
        boost::beast::flat_buffer buffer;
        while (serveOne(stream, buffer, controlled)) {
        }
    } catch (const std::exception&) {
        // Out of memory, most likely; the other connections go on.
    }
    wire.close();
}

}  // namespace s3server
