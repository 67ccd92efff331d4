#include "support/servers/ScriptedServer.hpp"

#include "support/servers/AcceptedSocket.hpp"
#include "support/servers/Conversation.hpp"
#include "support/servers/ScriptedConnection.hpp"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <stdexcept>
#include <system_error>
#include <thread>

namespace testsupport {
namespace {

struct FreeContext {
    void operator()(SSL_CTX* context) const { SSL_CTX_free(context); }
};

using ContextPtr = std::unique_ptr<SSL_CTX, FreeContext>;

ContextPtr tlsContext(const CertificateFiles& files) {
    ContextPtr context{SSL_CTX_new(TLS_server_method())};
    if (!context || SSL_CTX_use_certificate_chain_file(context.get(), files.certificate.c_str()) != 1 ||
        SSL_CTX_use_PrivateKey_file(context.get(), files.key.c_str(), SSL_FILETYPE_PEM) != 1)
        throw std::runtime_error("scripted server: can't use the certificate " + files.certificate.string());
    SSL_CTX_set_mode(context.get(), SSL_MODE_ENABLE_PARTIAL_WRITE | SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER);
    return context;
}

class Descriptor {
public:
    explicit Descriptor(int value) : value_(value) {
        if (value_ < 0) throw std::system_error(errno, std::generic_category(), "scripted server");
    }
    ~Descriptor() { ::close(value_); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    int get() const { return value_; }

private:
    int value_;
};

sockaddr_in loopback() {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

/// A socket that listens at a port of the system's choice.
class Entrance {
public:
    explicit Entrance(bool tls) : tls_(tls) {
        sockaddr_in address = loopback();
        socklen_t size = sizeof address;
        auto* const generic = reinterpret_cast<sockaddr*>(&address);
        if (bind(socket_.get(), generic, size) != 0 || listen(socket_.get(), SOMAXCONN) != 0 ||
            getsockname(socket_.get(), generic, &size) != 0)
            throw std::system_error(errno, std::generic_category(), "scripted server: can't listen");
        port_ = ntohs(address.sin_port);
    }

    int socket() const { return socket_.get(); }
    std::uint16_t port() const { return port_; }

    /// Whether TLS is spoken from the first byte on.
    bool tls() const { return tls_; }

private:
    Descriptor socket_{::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)};
    std::uint16_t port_ = 0;
    bool tls_;
};

// OpenSSL writes with write(2), which signals a client that is gone.
void blockBrokenPipeSignal() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

}  // namespace

/// Accepts connections and owns their threads.
class ScriptedServer::Listener {
public:
    Listener(std::vector<Script> scripts, const Options& options)
        : conversation_(std::move(scripts), options.repeatLast), entrance_(options.tls) {
        if ((options.tls || options.tlsToo) && !options.certificate)
            throw std::runtime_error("scripted server: TLS needs a certificate");
        if (options.certificate) tls_ = tlsContext(*options.certificate);
        if (options.tlsToo) second_.emplace(true);
        acceptor_ = std::thread([this] { acceptConnections(); });
    }

    ~Listener() {
        eventfd_write(stop_.get(), 1);
        acceptor_.join();
        for (std::thread& thread : connections_)
            thread.join();
    }

    Conversation& conversation() { return conversation_; }

    std::uint16_t port() const { return entrance_.port(); }

    std::uint16_t secondPort() const { return second_ ? second_->port() : 0; }

    std::size_t accepted() const { return accepted_; }

    std::size_t bytesReceived() const { return bytesReceived_; }

    bool waitForConnectionsToEnd(std::chrono::milliseconds limit) {
        std::unique_lock lock(mutex_);
        return ended_.wait_for(lock, limit, [this] { return open_ == 0; });
    }

private:
    void acceptConnections() {
        blockBrokenPipeSignal();
        const int second = second_ ? second_->socket() : -1;  // poll() passes over what is negative
        std::array<pollfd, 3> waiting{
            {{stop_.get(), POLLIN, 0}, {entrance_.socket(), POLLIN, 0}, {second, POLLIN, 0}}};
        while (poll(waiting.data(), waiting.size(), -1) > 0 && waiting[0].revents == 0) {
            if (waiting[1].revents != 0) acceptOneAt(entrance_);
            if (waiting[2].revents != 0) acceptOneAt(*second_);
        }
    }

    void acceptOneAt(const Entrance& entrance) {
        const int accepted = accept4(entrance.socket(), nullptr, nullptr, SOCK_CLOEXEC);
        if (accepted < 0) return;
        {
            const std::lock_guard lock(mutex_);
            ++open_;
        }
        const int number = static_cast<int>(++accepted_);
        connections_.emplace_back(
            [this, accepted, number, tls = entrance.tls()] { serve(accepted, number, tls); });
    }

    void serve(int socket, int number, bool tlsFromStart) {
        AcceptedSocket accepted(socket, stop_.get(), bytesReceived_);
        ScriptedConnection(accepted, conversation_, tls_.get(), number).serve(tlsFromStart);
        accepted.close();
        const std::lock_guard lock(mutex_);
        --open_;
        ended_.notify_all();
    }

    Conversation conversation_;
    ContextPtr tls_;
    Entrance entrance_;
    std::optional<Entrance> second_;
    Descriptor stop_{eventfd(0, EFD_CLOEXEC)};
    std::mutex mutex_;
    std::condition_variable ended_;
    int open_ = 0;
    std::atomic<std::size_t> accepted_ = 0;
    std::atomic<std::size_t> bytesReceived_ = 0;
    std::vector<std::thread> connections_;  // touched by the acceptor only, until it has ended
    std::thread acceptor_;
};

ScriptedServer::ScriptedServer(std::vector<Script> scripts) : ScriptedServer(std::move(scripts), Options{}) {}

ScriptedServer::ScriptedServer(std::vector<Script> scripts, const Options& options)
    : listener_(std::make_unique<Listener>(std::move(scripts), options)) {}

ScriptedServer::~ScriptedServer() = default;

std::string ScriptedServer::endpoint() const {
    return "127.0.0.1:" + std::to_string(port());
}

std::uint16_t ScriptedServer::port() const {
    return listener_->port();
}

std::uint16_t ScriptedServer::secondPort() const {
    return listener_->secondPort();
}

void ScriptedServer::expect(Script script) {
    listener_->conversation().expect(std::move(script));
}

std::vector<SeenRequest> ScriptedServer::requests() const {
    return listener_->conversation().requests();
}

std::size_t ScriptedServer::connections() const {
    return listener_->accepted();
}

std::size_t ScriptedServer::bytesReceived() const {
    return listener_->bytesReceived();
}

std::size_t ScriptedServer::unusedScripts() const {
    return listener_->conversation().unusedScripts();
}

std::size_t ScriptedServer::unexpectedRequests() const {
    return listener_->conversation().unexpectedRequests();
}

bool ScriptedServer::waitForConnectionsToEnd(std::chrono::milliseconds limit) const {
    return listener_->waitForConnectionsToEnd(limit);
}

}  // namespace testsupport
