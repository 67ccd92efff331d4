#pragma once

namespace testsupport {

/// A port on 127.0.0.1 that a socket holds.
class HeldPort {
public:
    ~HeldPort();
    HeldPort(const HeldPort&) = delete;
    HeldPort& operator=(const HeldPort&) = delete;

    unsigned number() const;

protected:
    HeldPort();

    int socket_;
};

/// Connections to it are refused.
class ClosedPort : public HeldPort {};

/// Connections to it are never completed, nor refused: others wait already, and nobody takes them.
class CrowdedPort : public HeldPort {
public:
    CrowdedPort();
    ~CrowdedPort();

private:
    static constexpr int waitingConnections = 2;

    int waiting_[waitingConnections];
};

}  // namespace testsupport
