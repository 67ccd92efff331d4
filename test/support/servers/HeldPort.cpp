#include "support/servers/HeldPort.hpp"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace testsupport {
namespace {

int checked(int result, const char* what) {
    if (result < 0) throw std::system_error(errno, std::generic_category(), what);
    return result;
}

int newSocket(int flags = 0) {
    return checked(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | flags, 0), "socket");
}

sockaddr_in addressOf(int socket) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    checked(getsockname(socket, reinterpret_cast<sockaddr*>(&address), &size), "getsockname");
    return address;
}

}  // namespace

HeldPort::HeldPort() : socket_(newSocket()) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    checked(bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), "bind");
}

HeldPort::~HeldPort() {
    close(socket_);
}

unsigned HeldPort::number() const {
    return ntohs(addressOf(socket_).sin_port);
}

CrowdedPort::CrowdedPort() {
    const sockaddr_in address = addressOf(socket_);
    checked(listen(socket_, 0), "listen");
    for (int& connection : waiting_) {
        connection = newSocket(SOCK_NONBLOCK);
        connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address);
    }
}

CrowdedPort::~CrowdedPort() {
    for (const int connection : waiting_)
        close(connection);
}

}  // namespace testsupport
