#pragma once

#include <openssl/ssl.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

namespace testsupport {

/// One accepted connection, plain or TLS. Every wait ends at once when the event descriptor `stop` becomes
/// readable; the operation then reports the end of the connection. For one thread.
class AcceptedSocket {
public:
    /// Owns `socket`, borrows `stop`. Adds what is read, TLS taken off, to `bytesReceived`.
    AcceptedSocket(int socket, int stop, std::atomic<std::size_t>& bytesReceived);
    ~AcceptedSocket();
    AcceptedSocket(const AcceptedSocket&) = delete;
    AcceptedSocket& operator=(const AcceptedSocket&) = delete;

    /// Server-side handshake; false if the client fails it.
    bool startTls(SSL_CTX& context);

    bool isTls() const { return tls_ != nullptr; }

    /// The next byte without taking it, not for TLS; nothing at the end of the connection.
    std::optional<unsigned char> peek();

    /// At least one byte, or 0 at the end of the connection.
    std::size_t readSome(char* buffer, std::size_t size);

    /// False if the client is gone.
    bool write(std::string_view bytes);

    /// False if the client hung up meanwhile.
    bool pause(std::chrono::milliseconds duration);

    /// Ends the connection with a TCP reset.
    void reset();

    void close();

private:
    std::size_t receive(char* buffer, std::size_t size);
    bool waitFor(short events);
    bool waitAsTlsWants(int result);

    struct FreeTls {
        void operator()(SSL* tls) const { SSL_free(tls); }
    };

    int socket_;
    int stop_;
    std::atomic<std::size_t>& bytesReceived_;
    std::unique_ptr<SSL, FreeTls> tls_;
};

}  // namespace testsupport
