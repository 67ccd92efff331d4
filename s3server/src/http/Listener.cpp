#include "http/Listener.hpp"

#include <sys/socket.h>

#include <atomic>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ssl/context.hpp>
#include <chrono>
#include <list>
#include <mutex>
#include <stdexcept>
#include <system_error>
#include <thread>

#include "http/SocketWire.hpp"

namespace s3server {
namespace {

namespace asio = boost::asio;
using boost::system::error_code;
using tcp = asio::ip::tcp;

tcp::endpoint endpointOf(const Options& options) {
    error_code error;
    const auto address = asio::ip::make_address(options.address, error);
    if (error) throw std::runtime_error("'" + options.address + "' is no IP address");
    return {address, options.port};
}

std::unique_ptr<asio::ssl::context> tlsContext(const std::optional<TlsFiles>& files) {
    if (!files) return nullptr;
    auto context = std::make_unique<asio::ssl::context>(asio::ssl::context::tls_server);
    context->set_options(asio::ssl::context::default_workarounds | asio::ssl::context::no_tlsv1 |
                         asio::ssl::context::no_tlsv1_1);
    error_code error;
    context->use_certificate_chain_file(files->certificateChainFile, error);
    if (error)
        throw std::runtime_error("no certificate chain can be read from " + files->certificateChainFile);
    context->use_private_key_file(files->privateKeyFile, asio::ssl::context::pem, error);
    if (error) {
        throw std::runtime_error("no private key for that certificate can be read from " +
                                 files->privateKeyFile);
    }
    return context;
}

constexpr std::chrono::milliseconds pauseAfterFailure{10};

struct Connection {
    std::unique_ptr<Wire> wire;
    std::thread thread;
    std::atomic<bool> ended{false};
};

}  // namespace

class Listener::Sockets {
public:
    Sockets(const Options& options, Serve serve)
        : address_(options.address),
          serve_(std::move(serve)),
          tls_(tlsContext(options.tls)),
          acceptor_(context_) {
        bind(endpointOf(options));
        thread_ = std::thread([this] { acceptAll(); });
    }
    ~Sockets() { stop(); }
    Sockets(const Sockets&) = delete;
    Sockets& operator=(const Sockets&) = delete;

    std::uint16_t port() const { return port_; }
    std::string endpoint() const {
        const bool isV6 = address_.find(':') != std::string::npos;
        return (isV6 ? '[' + address_ + ']' : address_) + ':' + std::to_string(port_);
    }
    std::uint64_t accepted() const { return accepted_; }
    void stop();

private:
    void bind(const tcp::endpoint& endpoint);
    void acceptAll();
    void start(tcp::socket socket);
    void joinEnded();

    const std::string address_;
    const Serve serve_;
    asio::io_context context_;
    const std::unique_ptr<asio::ssl::context> tls_;
    tcp::acceptor acceptor_;
    std::uint16_t port_ = 0;
    std::atomic<std::uint64_t> accepted_{0};
    // Changed by the accepting thread, and by stop() when that thread has ended.
    std::list<Connection> connections_;
    std::thread thread_;
    std::atomic<bool> stopping_{false};
    std::mutex stopMutex_;
};

void Listener::Sockets::bind(const tcp::endpoint& endpoint) {
    try {
        acceptor_.open(endpoint.protocol());
        acceptor_.set_option(tcp::acceptor::reuse_address(true));
        acceptor_.bind(endpoint);
        acceptor_.listen();
        port_ = acceptor_.local_endpoint().port();
    } catch (const boost::system::system_error& error) {
        throw std::runtime_error("can't listen on " + endpoint.address().to_string() + " port " +
                                 std::to_string(endpoint.port()) + ": " + error.code().message());
    }
}

void Listener::Sockets::acceptAll() {
    while (!stopping_) {
        error_code error;
        tcp::socket socket = acceptor_.accept(error);
        joinEnded();
        if (stopping_) break;
        // Out of descriptors, most likely: connections that end give some back.
        if (error)
            std::this_thread::sleep_for(pauseAfterFailure);
        else
            start(std::move(socket));
    }
}

void Listener::Sockets::start(tcp::socket socket) {
    Connection& connection = connections_.emplace_back();
    connection.wire = makeWire(std::move(socket), tls_.get());
    try {
        connection.thread = std::thread([this, &connection, number = ++accepted_] {
            serve_(*connection.wire, number);
            connection.ended = true;
        });
    } catch (const std::system_error&) {
        connections_.pop_back();  // no thread to be had: the client sees the connection closed
    }
}

void Listener::Sockets::joinEnded() {
    connections_.remove_if([](Connection& connection) {
        if (!connection.ended) return false;
        connection.thread.join();
        return true;
    });
}

void Listener::Sockets::stop() {
    const std::lock_guard lock(stopMutex_);
    stopping_ = true;
    // Wakes the accepting thread, which closing the socket wouldn't.
    ::shutdown(acceptor_.native_handle(), SHUT_RDWR);
    if (thread_.joinable()) thread_.join();
    error_code ignored;
    acceptor_.close(ignored);
    for (Connection& connection : connections_)
        connection.wire->interrupt();
    for (Connection& connection : connections_)
        connection.thread.join();
    connections_.clear();
}

Listener::Listener(const Options& options, Serve serve)
    : sockets_(std::make_unique<Sockets>(options, std::move(serve))) {}

Listener::~Listener() = default;

std::uint16_t Listener::port() const {
    return sockets_->port();
}

std::string Listener::endpoint() const {
    return sockets_->endpoint();
}

std::uint64_t Listener::accepted() const {
    return sockets_->accepted();
}

void Listener::stop() {
    sockets_->stop();
}

}  // namespace s3server
