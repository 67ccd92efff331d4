#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace testsupport {

/// Carries connections to a server on 127.0.0.1, byte for byte, and breaks those it is told to. So a
/// connection breaks where neither of its ends wants it to, also in the middle of a request or of a TLS
/// record. It can play a proxy, too, whose tunnels all lead to that server, whatever host they are for. All
/// members may be called from any thread. Destruction drops what is open.
class Relay {
public:
    enum class Break {
        Close,  ///< both ends see the connection closed
        Reset,  ///< the client sees it reset
        Stall   ///< nothing more comes from the side that has reached its limit; the connection stays open
    };

    static constexpr std::size_t everything = std::numeric_limits<std::size_t>::max();

    /// How many bytes are carried before the break.
    struct Fate {
        Break how = Break::Close;
        std::size_t fromClient = everything;
        std::size_t fromServer = everything;
    };

    enum class Opening {
        Nothing,  ///< carries from the first byte on
        Connect   ///< grants a CONNECT first, and closes what begins with anything else
    };

    /// Throws boost::system::system_error when it can't listen.
    explicit Relay(std::uint16_t serverPort, Opening opening = Opening::Nothing);
    ~Relay();
    Relay(const Relay&) = delete;
    Relay& operator=(const Relay&) = delete;

    /// "127.0.0.1:PORT"
    std::string endpoint() const;

    std::uint16_t port() const;

    /// What tunnels were asked for, "HOST:PORT" each, in the order in which they were granted.
    std::vector<std::string> tunnels() const;

    /// The fate of the next connection accepted; those after it are carried whole.
    void breakNext(const Fate& fate);

    /// Connections accepted so far.
    std::size_t connections() const;

private:
    class Listener;

    std::unique_ptr<Listener> listener_;
};

}  // namespace testsupport
