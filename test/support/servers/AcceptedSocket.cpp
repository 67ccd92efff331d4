#include "support/servers/AcceptedSocket.hpp"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace testsupport {

AcceptedSocket::AcceptedSocket(int socket, int stop, std::atomic<std::size_t>& bytesReceived)
    : socket_(socket), stop_(stop), bytesReceived_(bytesReceived) {
    fcntl(socket_, F_SETFL, fcntl(socket_, F_GETFL) | O_NONBLOCK);
}

AcceptedSocket::~AcceptedSocket() {
    close();
}

bool AcceptedSocket::startTls(SSL_CTX& context) {
    tls_.reset(SSL_new(&context));
    SSL_set_fd(tls_.get(), socket_);
    for (;;) {
        const int result = SSL_accept(tls_.get());
        if (result == 1) return true;
        if (!waitAsTlsWants(result)) return false;
    }
}

std::optional<unsigned char> AcceptedSocket::peek() {
    unsigned char byte = 0;
    if (!waitFor(POLLIN) || recv(socket_, &byte, 1, MSG_PEEK) != 1) return std::nullopt;
    return byte;
}

std::size_t AcceptedSocket::readSome(char* buffer, std::size_t size) {
    const std::size_t count = receive(buffer, size);
    bytesReceived_ += count;
    return count;
}

std::size_t AcceptedSocket::receive(char* buffer, std::size_t size) {
    if (!tls_) {
        if (!waitFor(POLLIN)) return 0;
        const ssize_t count = recv(socket_, buffer, size, 0);
        return count > 0 ? static_cast<std::size_t>(count) : 0;
    }
    std::size_t count = 0;
    for (;;) {
        const int result = SSL_read_ex(tls_.get(), buffer, size, &count);
        if (result == 1) return count;
        if (!waitAsTlsWants(result)) return 0;
    }
}

bool AcceptedSocket::write(std::string_view bytes) {
    while (!bytes.empty()) {
        std::size_t count = 0;
        if (tls_) {
            const int result = SSL_write_ex(tls_.get(), bytes.data(), bytes.size(), &count);
            if (result != 1 && !waitAsTlsWants(result)) return false;
        } else {
            if (!waitFor(POLLOUT)) return false;
            const ssize_t sent = send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (sent < 0 && errno != EAGAIN) return false;
            count = sent > 0 ? static_cast<std::size_t>(sent) : 0;
        }
        bytes.remove_prefix(count);
    }
    return true;
}

bool AcceptedSocket::pause(std::chrono::milliseconds duration) {
    std::array<pollfd, 2> waiting{{{socket_, POLLRDHUP, 0}, {stop_, POLLIN, 0}}};
    return poll(waiting.data(), waiting.size(), static_cast<int>(duration.count())) == 0;
}

void AcceptedSocket::reset() {
    const linger now{1, 0};
    setsockopt(socket_, SOL_SOCKET, SO_LINGER, &now, sizeof now);
    close();
}

void AcceptedSocket::close() {
    if (socket_ < 0) return;
    tls_.reset();
    ::close(socket_);
    socket_ = -1;
}

bool AcceptedSocket::waitFor(short events) {
    std::array<pollfd, 2> waiting{{{socket_, events, 0}, {stop_, POLLIN, 0}}};
    return poll(waiting.data(), waiting.size(), -1) > 0 && waiting[1].revents == 0;
}

bool AcceptedSocket::waitAsTlsWants(int result) {
    switch (SSL_get_error(tls_.get(), result)) {
        case SSL_ERROR_WANT_READ:
            return waitFor(POLLIN);
        case SSL_ERROR_WANT_WRITE:
            return waitFor(POLLOUT);
        default:
            return false;
    }
}

}  // namespace testsupport
