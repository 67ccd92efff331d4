#pragma once

#include "support/servers/Script.hpp"
#include "support/servers/TestCertificate.hpp"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace testsupport {

/// An HTTP/1.1 server on 127.0.0.1 at a port of the system's choice that answers the first request by the
/// first script, and so on, whatever the requests ask for. It also plays a proxy: requests with an absolute
/// target are requests like any other, a CONNECT is granted and what follows in the tunnel is answered here.
///
/// Bodies of requests are framed by Content-Length; without one, or with one that isn't a number, there is
/// none. All members may be called from any thread; each connection has its own thread. Destruction drops
/// what is open.
class ScriptedServer {
public:
    struct Options {
        std::optional<CertificateFiles> certificate = std::nullopt;  ///< for TLS, also inside of tunnels
        bool tls = false;         ///< TLS from the first byte on; needs a certificate
        bool tlsToo = false;      ///< a second port, with TLS from the first byte on; needs a certificate
        bool repeatLast = false;  ///< the last script answers all further requests too
    };

    /// Throws std::runtime_error when it can't listen or the certificate is no good.
    explicit ScriptedServer(std::vector<Script> scripts = {});
    ScriptedServer(std::vector<Script> scripts, const Options& options);
    ~ScriptedServer();
    ScriptedServer(const ScriptedServer&) = delete;
    ScriptedServer& operator=(const ScriptedServer&) = delete;

    /// "127.0.0.1:PORT"
    std::string endpoint() const;

    std::uint16_t port() const;

    /// The second port; what comes there is part of the same conversation. 0 if there is none.
    std::uint16_t secondPort() const;

    /// Adds a script behind those not used yet.
    void expect(Script script);

    /// What came so far, in order of arrival; a request appears as soon as its head is complete, its body
    /// later.
    std::vector<SeenRequest> requests() const;

    std::size_t unusedScripts() const;

    /// Requests beyond the scripts. Each is answered with status 599 and an error document whose code is
    /// UnexpectedRequest (nobody retries that), and its connection closed.
    std::size_t unexpectedRequests() const;

    /// Connections accepted so far, whether a request came over them or not.
    std::size_t connections() const;

    /// Bytes that clients sent so far, TLS taken off: nothing of a handshake, and of a request every byte,
    /// also where it never became whole.
    std::size_t bytesReceived() const;

    /// Waits until every connection has ended, as they do once the client is gone; requests() is final then.
    /// False if some are still there after that time.
    bool waitForConnectionsToEnd(std::chrono::milliseconds limit = std::chrono::seconds(10)) const;

private:
    class Listener;

    std::unique_ptr<Listener> listener_;
};

}  // namespace testsupport
