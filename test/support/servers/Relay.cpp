#include "support/servers/Relay.hpp"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <functional>
#include <list>
#include <mutex>
#include <thread>
#include <utility>

namespace testsupport {
namespace {

namespace asio = boost::asio;
using boost::system::error_code;
using tcp = asio::ip::tcp;

// Small, so that a stalled upload fills it and its sender stops.
constexpr int receiveBufferSize = 65536;

tcp::endpoint loopback(std::uint16_t port) {
    return {asio::ip::address_v4::loopback(), port};
}

/// Reads the head of a CONNECT request, byte by byte so that nothing behind it is taken, and grants it. The
/// target; empty when it was something else.
std::string grantTunnel(tcp::socket& client) {
    constexpr std::size_t longestHead = 16384;
    std::string head;
    char byte = 0;
    error_code end;
    while (head.size() < longestHead && head.find("\r\n\r\n") == std::string::npos) {
        if (asio::read(client, asio::buffer(&byte, 1), end) == 0) return {};
        head += byte;
    }
    const std::string method = "CONNECT ";
    if (head.compare(0, method.size(), method) != 0) return {};
    asio::write(client, asio::buffer(std::string("HTTP/1.1 200 Connection established\r\n\r\n")), end);
    return head.substr(method.size(), head.find(' ', method.size()) - method.size());
}

// Not through the socket object, which another thread is using.
void shutDown(tcp::socket& socket, int direction) {
    ::shutdown(socket.native_handle(), direction);
}

/// One connection on its way, one thread a direction.
class Carried {
public:
    /// Told of a tunnel's target; null: the connection is carried from its first byte on.
    using TunnelListener = std::function<void(std::string)>;

    Carried(tcp::socket client, tcp::socket server, const Relay::Fate& fate, TunnelListener onTunnel)
        : client_(std::move(client)),
          server_(std::move(server)),
          fate_(fate),
          onTunnel_(std::move(onTunnel)) {}

    /// Returns when the connection has ended on both sides.
    void serve() {
        if (onTunnel_ && !openTunnel()) return close();
        std::thread back([this] { carry(server_, client_, fate_.fromServer); });
        carry(client_, server_, fate_.fromClient);
        back.join();
        close();
    }

    /// Makes serve() return. From any thread.
    void interrupt() {
        const std::lock_guard lock(closing_);
        if (!client_.is_open()) return;
        shutDown(client_, SHUT_RDWR);
        shutDown(server_, SHUT_RDWR);
    }

private:
    bool openTunnel() {
        std::string target = grantTunnel(client_);
        const bool granted = !target.empty();
        if (granted) onTunnel_(std::move(target));
        return granted;
    }

    void carry(tcp::socket& from, tcp::socket& to, std::size_t limit) {
        std::array<char, 16384> buffer{};
        while (limit > 0) {
            error_code end;
            const auto count =
                from.read_some(asio::buffer(buffer.data(), std::min(limit, buffer.size())), end);
            if (!end) asio::write(to, asio::buffer(buffer.data(), count), end);
            if (end) {
                if (!broken_) shutDown(to, SHUT_WR);
                return;
            }
            limit -= count;
        }
        if (fate_.how != Relay::Break::Stall) breakOff();
    }

    void breakOff() {
        broken_ = true;
        shutDown(server_, SHUT_RDWR);
        shutDown(client_, SHUT_RD);  // sends nothing, so that a reset can still be what the client sees
    }

    void close() {
        const std::lock_guard lock(closing_);
        error_code ignored;
        if (broken_ && fate_.how == Relay::Break::Reset)
            client_.set_option(asio::socket_base::linger(true, 0), ignored);
        client_.close(ignored);
        server_.close(ignored);
    }

    tcp::socket client_;
    tcp::socket server_;
    const Relay::Fate fate_;
    const TunnelListener onTunnel_;
    std::atomic<bool> broken_ = false;
    std::mutex closing_;  // held while the descriptors go, which may be another's afterwards
};

}  // namespace

/// Accepts connections and owns their threads.
class Relay::Listener {
public:
    Listener(std::uint16_t serverPort, Opening opening)
        : serverPort_(serverPort), opening_(opening), acceptor_(context_) {
        acceptor_.open(tcp::v4());
        acceptor_.set_option(asio::socket_base::receive_buffer_size(receiveBufferSize));
        acceptor_.bind(loopback(0));
        acceptor_.listen();
        port_ = acceptor_.local_endpoint().port();
        thread_ = std::thread([this] { acceptAll(); });
    }

    ~Listener() {
        stopping_ = true;
        ::shutdown(acceptor_.native_handle(), SHUT_RDWR);  // wakes the accepting thread
        thread_.join();
        for (Entry& entry : entries_)
            entry.carried.interrupt();
        for (Entry& entry : entries_)
            entry.thread.join();
    }

    std::uint16_t port() const { return port_; }

    std::size_t accepted() const { return accepted_; }

    std::vector<std::string> tunnels() const {
        const std::lock_guard lock(mutex_);
        return tunnels_;
    }

    void breakNext(const Fate& fate) {
        const std::lock_guard lock(mutex_);
        next_ = fate;
    }

private:
    struct Entry {
        Entry(tcp::socket client, tcp::socket server, const Fate& fate, Carried::TunnelListener onTunnel)
            : carried(std::move(client), std::move(server), fate, std::move(onTunnel)),
              thread([this] { carried.serve(); }) {}

        Carried carried;
        std::thread thread;
    };

    void acceptAll() {
        while (!stopping_) {
            error_code error;
            tcp::socket client = acceptor_.accept(error);
            if (error) continue;
            tcp::socket server(context_);
            server.connect(loopback(serverPort_), error);
            if (!error) start(std::move(client), std::move(server));
        }
    }

    void start(tcp::socket client, tcp::socket server) {
        // What comes in several parts is passed on so, and not held back until the other end has confirmed.
        error_code ignored;
        client.set_option(tcp::no_delay(true), ignored);
        server.set_option(tcp::no_delay(true), ignored);
        ++accepted_;
        Carried::TunnelListener onTunnel;
        if (opening_ == Opening::Connect)
            onTunnel = [this](std::string target) { noteTunnel(std::move(target)); };
        entries_.emplace_back(std::move(client), std::move(server), takeFate(), std::move(onTunnel));
    }

    void noteTunnel(std::string target) {
        const std::lock_guard lock(mutex_);
        tunnels_.push_back(std::move(target));
    }

    Fate takeFate() {
        const std::lock_guard lock(mutex_);
        return std::exchange(next_, Fate{});
    }

    const std::uint16_t serverPort_;
    const Opening opening_;
    asio::io_context context_;
    tcp::acceptor acceptor_;
    std::uint16_t port_ = 0;
    std::atomic<bool> stopping_ = false;
    std::atomic<std::size_t> accepted_ = 0;
    mutable std::mutex mutex_;
    Fate next_;
    std::vector<std::string> tunnels_;
    std::list<Entry> entries_;  // touched by the acceptor only, until it has ended
    std::thread thread_;
};

Relay::Relay(std::uint16_t serverPort, Opening opening)
    : listener_(std::make_unique<Listener>(serverPort, opening)) {}

Relay::~Relay() = default;

std::string Relay::endpoint() const {
    return "127.0.0.1:" + std::to_string(port());
}

std::uint16_t Relay::port() const {
    return listener_->port();
}

std::vector<std::string> Relay::tunnels() const {
    return listener_->tunnels();
}

void Relay::breakNext(const Fate& fate) {
    listener_->breakNext(fate);
}

std::size_t Relay::connections() const {
    return listener_->accepted();
}

}  // namespace testsupport
