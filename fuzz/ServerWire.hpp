#pragma once

#include <string>
#include <string_view>

#include "http/Wire.hpp"

namespace fuzz {

/// A connection whose client has sent all it will, and reads everything.
class ServerWire : public s3server::Wire {
public:
    /// The server gets the bytes in pieces of at most `step`.
    ServerWire(std::string_view sent, std::size_t step) : unread_(sent), step_(step) {}

    bool open() override { return true; }
    std::size_t read(char* data, std::size_t size) override;
    std::size_t write(std::string_view bytes) override;
    void close() override {}
    void reset() override { wasReset_ = true; }
    void interrupt() override {}

    const std::string& received() const { return received_; }
    bool wasReset() const { return wasReset_; }

private:
    std::string_view unread_;
    std::size_t step_;
    std::string received_;
    bool wasReset_ = false;
};

}  // namespace fuzz
