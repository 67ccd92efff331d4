#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "http/Wire.hpp"
#include "s3server/Options.hpp"

namespace s3server {

/// Accepts connections and runs each on a thread of its own.
class Listener {
public:
    /// What a connection's thread does; it ends with the connection.
    using Serve = std::function<void(Wire& wire, std::uint64_t connection)>;

    /// Throws std::runtime_error if the address can't be bound or a TLS file can't be used.
    Listener(const Options& options, Serve serve);
    ~Listener();
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    std::uint16_t port() const;
    /// ADDRESS:PORT, an IPv6 address in brackets.
    std::string endpoint() const;
    std::uint64_t accepted() const;
    /// Interrupts all connections and joins all threads. Once is enough, more does no harm.
    void stop();

private:
    class Sockets;
    const std::unique_ptr<Sockets> sockets_;
};

}  // namespace s3server
