#pragma once

#include <cstddef>
#include <string_view>

namespace s3server {

/// A connection's bytes, in the clear or through TLS. Belongs to one thread, except where said.
class Wire {
public:
    Wire() = default;
    Wire(const Wire&) = delete;
    Wire& operator=(const Wire&) = delete;
    virtual ~Wire() = default;

    /// To be called first. False if the other side doesn't agree to the encryption.
    virtual bool open() = 0;
    /// Waits for at least one byte. 0 when the connection has ended.
    virtual std::size_t read(char* data, std::size_t size) = 0;
    /// How many bytes could be sent: fewer than all when the connection has ended.
    virtual std::size_t write(std::string_view bytes) = 0;
    /// Ends the connection in an orderly way.
    virtual void close() = 0;
    /// Ends the connection with a reset.
    virtual void reset() = 0;
    /// Makes calls in progress fail, and all later ones. May be called from any thread.
    virtual void interrupt() = 0;
};

}  // namespace s3server
