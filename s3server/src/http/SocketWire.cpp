#include "http/SocketWire.hpp"

#include <sys/socket.h>

#include <boost/asio/buffer.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/write.hpp>
#include <mutex>

namespace s3server {
namespace {

namespace asio = boost::asio;
using boost::system::error_code;
using tcp = asio::ip::tcp;

/// What both kinds of wire do with the socket below them.
class SocketEnd {
public:
    void close(tcp::socket& socket) {
        const std::lock_guard lock(mutex_);
        error_code ignored;
        socket.shutdown(tcp::socket::shutdown_both, ignored);
        socket.close(ignored);
    }
    void reset(tcp::socket& socket) {
        const std::lock_guard lock(mutex_);
        error_code ignored;
        socket.set_option(asio::socket_base::linger(true, 0), ignored);
        socket.close(ignored);
    }
    /// Not through the socket object, which another thread is using.
    void interrupt(tcp::socket& socket) {
        const std::lock_guard lock(mutex_);
        if (socket.is_open()) ::shutdown(socket.native_handle(), SHUT_RDWR);
    }

private:
    // Held while the socket is closed, so that interrupt() never meets a descriptor that is another's by
    // then.
    std::mutex mutex_;
};

class PlainWire : public Wire {
public:
    explicit PlainWire(tcp::socket socket) : socket_(std::move(socket)) {}

    bool open() override { return true; }
    std::size_t read(char* data, std::size_t size) override {
        error_code ended;
        return socket_.read_some(asio::buffer(data, size), ended);
    }
    std::size_t write(std::string_view bytes) override {
        error_code ended;
        return asio::write(socket_, asio::buffer(bytes.data(), bytes.size()), ended);
    }
    void close() override { end_.close(socket_); }
    void reset() override { end_.reset(socket_); }
    void interrupt() override { end_.interrupt(socket_); }

private:
    tcp::socket socket_;
    SocketEnd end_;
};

class TlsWire : public Wire {
public:
    TlsWire(tcp::socket socket, asio::ssl::context& context) : stream_(std::move(socket), context) {}

    bool open() override {
        error_code error;
        stream_.handshake(asio::ssl::stream_base::server, error);
        return !error;
    }
    std::size_t read(char* data, std::size_t size) override {
        error_code ended;
        return stream_.read_some(asio::buffer(data, size), ended);
    }
    std::size_t write(std::string_view bytes) override {
        error_code ended;
        return asio::write(stream_, asio::buffer(bytes.data(), bytes.size()), ended);
    }
    void close() override {
        error_code ignored;
        stream_.shutdown(ignored);
        end_.close(stream_.next_layer());
    }
    void reset() override { end_.reset(stream_.next_layer()); }
    void interrupt() override { end_.interrupt(stream_.next_layer()); }

private:
    asio::ssl::stream<tcp::socket> stream_;
    SocketEnd end_;
};

}  // namespace

std::unique_ptr<Wire> makeWire(tcp::socket socket, asio::ssl::context* tls) {
    error_code ignored;
    socket.set_option(tcp::no_delay(true), ignored);
    if (tls) return std::make_unique<TlsWire>(std::move(socket), *tls);
    return std::make_unique<PlainWire>(std::move(socket));
}

}  // namespace s3server
