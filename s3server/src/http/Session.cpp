#include "http/Session.hpp"

#include <algorithm>
#include <boost/asio/error.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>
#include <limits>
#include <sstream>

#include "http/Delivery.hpp"
#include "http/ReadStream.hpp"
#include "text/Text.hpp"

namespace s3server {
namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using boost::system::error_code;

constexpr std::uint32_t largestHead = 64U << 10U;
// Room for a head and what came with it. It also ends chunk heads and trailers that don't end.
constexpr std::size_t largestBuffer = std::size_t{128} << 10U;
// Answers up to this size go out in one piece with their head.
constexpr std::uint64_t smallBody = 16U << 10U;

using Parser = http::request_parser<http::buffer_body>;

Request headOf(const http::request<http::buffer_body>& message) {
    Request request;
    request.method = std::string(message.method_string());
    request.target = std::string(message.target());
    for (const auto& field : message)
        request.headers.emplace_back(lowered({field.name_string().data(), field.name_string().size()}),
                                     std::string(field.value()));
    return request;
}

bool mayHaveBody(const Request& request, int status) {
    return request.method != "HEAD" && status != 204 && status != 304;
}

bool announcesLength(const Request& request, const Reply& reply) {
    if (reply.status == 204 || reply.status == 304) return false;
    // What HEAD would tell of an error's body isn't known: there is none.
    return request.method != "HEAD" || reply.status < 300;
}

/// What is said of the connection: without a word, HTTP/1.1 keeps it and HTTP/1.0 ends it.
std::string_view connectionHeader(bool keepAlive, unsigned version) {
    if (!keepAlive) return "close";
    return version < 11 ? "keep-alive" : "";
}

std::string headText(const Request& request, const Reply& reply, TimePoint now, std::string_view connection) {
    http::response<http::empty_body> head;
    head.version(11);
    head.result(static_cast<unsigned>(reply.status));
    for (const auto& [name, value] : reply.headers)
        head.insert(name, value);
    const auto setIfMissing = [&head](http::field name, const std::string& value) {
        if (head.count(name) == 0) head.set(name, value);
    };
    setIfMissing(http::field::date, httpDate(now));
    setIfMissing(http::field::server, "s3server");
    if (announcesLength(request, reply))
        setIfMissing(http::field::content_length, std::to_string(reply.body.size()));
    if (!connection.empty()) head.set(http::field::connection, std::string(connection));
    std::ostringstream text;
    text << head.base();
    return text.str();
}

class Session {
public:
    Session(Wire& wire, const Backend& backend, std::uint64_t connection)
        : stream_{wire}, wire_(wire), backend_(backend), connection_(connection) {}

    /// One request and its answer. False when the connection is to end.
    bool serveOne();
    Ending ending() const { return ending_; }

private:
    bool receiveBody(Parser& parser, Exchange& exchange);
    void refuseUnreadable(const error_code& error);
    bool send(const Exchange& exchange, const Delivery& delivery, bool keepAlive);
    std::uint64_t sendBody(const Bytes& body, std::uint64_t limit);
    RequestRecord record(const Exchange& exchange) const;

    ReadStream stream_;
    Wire& wire_;
    const Backend& backend_;
    const std::uint64_t connection_;
    boost::beast::flat_buffer buffer_{largestBuffer};
    Ending ending_ = Ending::Close;
    /// The latest request's, 10 times that of HTTP.
    unsigned version_ = 11;
};

bool Session::serveOne() {
    Parser parser;
    parser.header_limit(largestHead);
    // Not boost::none: Boost 1.74 takes that for a limit below everything.
    parser.body_limit(std::numeric_limits<std::uint64_t>::max());
    error_code error;
    http::read_header(stream_, buffer_, parser, error);
    if (error) {
        refuseUnreadable(error);
        return false;
    }
    version_ = parser.get().version();
    Exchange exchange = backend_.service.accept(headOf(parser.get()));
    if (version_ >= 11 && lowered(exchange.request().header("expect")) == "100-continue")
        wire_.write("HTTP/1.1 100 Continue\r\n\r\n");
    const bool whole = receiveBody(parser, exchange);
    if (!whole && exchange.wantsMore()) return false;
    const Delivery delivery = deliver(backend_.service, backend_.faults, exchange);
    return send(exchange, delivery, whole && parser.keep_alive());
}

/// False if the body didn't arrive as a whole: the connection ended, or the rest isn't wanted.
bool Session::receiveBody(Parser& parser, Exchange& exchange) {
    while (!parser.is_done()) {
        if (!exchange.wantsMore()) return false;
        const BytesBuilder::Space space = exchange.space();
        auto& body = parser.get().body();
        body.data = space.data;
        body.size = space.size;
        error_code error;
        http::read_some(stream_, buffer_, parser, error);
        if (error && error != http::error::need_buffer) return false;
        exchange.commit(space.size - body.size);
    }
    return true;
}

/// A connection that ends between two requests is as usual; anything else gets an answer.
void Session::refuseUnreadable(const error_code& error) {
    if (error == http::error::end_of_stream || error == asio::error::eof ||
        error == http::error::partial_message)
        return;
    Exchange exchange{Request{}};
    const Delivery delivery{
        backend_.service.refuse(exchange.request(), S3Error("BadRequest")
                                                        .saying("An error occurred when parsing the HTTP "
                                                                "request: " +
                                                                error.message()))};
    send(exchange, delivery, false);
}

bool Session::send(const Exchange& exchange, const Delivery& delivery, bool keepAlive) {
    const auto& reply = delivery.reply;
    ending_ = delivery.ending == Ending::Reset ? Ending::Reset : Ending::Close;
    RequestRecord seen = record(exchange);
    if (!reply) {
        backend_.log.add(std::move(seen));
        return false;
    }
    const bool hasBody = mayHaveBody(exchange.request(), reply->status);
    const std::uint64_t planned = hasBody ? std::min(reply->body.size(), delivery.bodyLimit) : 0;
    seen.status = reply->status;
    seen.responseBytes = planned;
    const std::uint64_t number = backend_.log.add(std::move(seen));

    std::string head =
        headText(exchange.request(), *reply, backend_.service.now(), connectionHeader(keepAlive, version_));
    const bool inOnePiece = planned <= smallBody;
    if (inOnePiece) head += reply->body.piece(0, planned).text();
    if (wire_.write(head) != head.size()) {
        backend_.log.correct(number, 0);
        return false;
    }
    const std::uint64_t sent = inOnePiece ? planned : sendBody(reply->body, planned);
    if (sent != planned) backend_.log.correct(number, sent);
    return sent == planned && keepAlive && delivery.ending == Ending::KeepOpen;
}

std::uint64_t Session::sendBody(const Bytes& body, std::uint64_t limit) {
    std::uint64_t sent = 0;
    for (const Bytes::Segment& segment : body.segments()) {
        const auto piece = segment.view().substr(
            0, static_cast<std::size_t>(std::min<std::uint64_t>(segment.size, limit - sent)));
        const std::size_t count = wire_.write(piece);
        sent += count;
        if (count != piece.size() || sent == limit) break;
    }
    return sent;
}

RequestRecord Session::record(const Exchange& exchange) const {
    const Request& request = exchange.request();
    RequestRecord seen;
    seen.operation = exchange.operation();
    seen.method = request.method;
    seen.target = request.target;
    seen.bucket = request.bucket;
    seen.key = request.key;
    seen.headers = request.headers;
    seen.bodyBytes = exchange.bodyBytes();
    seen.connection = connection_;
    return seen;
}

}  // namespace

void serveConnection(Wire& wire, const Backend& backend, std::uint64_t connection) {
    if (!wire.open()) return wire.close();
    try {
        Session session(wire, backend, connection);
        while (session.serveOne()) {
        }
        session.ending() == Ending::Reset ? wire.reset() : wire.close();
    } catch (const std::exception&) {
        // Out of memory, most likely; the other connections go on.
        wire.reset();
    }
}

}  // namespace s3server
