#pragma once

#include "support/servers/AcceptedSocket.hpp"
#include "support/servers/Conversation.hpp"

#include <string>

namespace testsupport {

/// Serves one connection: reads requests and plays the scripts the conversation has for them. For one thread.
class ScriptedConnection {
public:
    /// `tls` is null if the server has no certificate; it, the socket and the conversation outlive this.
    ScriptedConnection(AcceptedSocket& socket, Conversation& conversation, SSL_CTX* tls, int number);

    /// Returns when the connection has ended.
    void serve(bool tlsFromStart);

private:
    // Each of these is false once the connection has ended.
    bool serveRequest();
    bool readHead(SeenRequest& head);
    bool play(const Script& script, bool expectsContinue);
    bool enterTunnel();
    bool readBody();

    bool perform(const Step::Send& step);
    bool perform(const Step::SendMade& step);
    bool perform(const Step::Drip& step);
    bool perform(const Step::Sleep& step);
    bool perform(const Step::ReadBody& step);
    bool perform(const Step::NoReadBody& step);
    bool perform(const Step::Close& step);
    bool perform(const Step::Reset& step);
    bool perform(const Step::ConnectReply& step);

    AcceptedSocket& socket_;
    Conversation& conversation_;
    SSL_CTX* tls_;
    int number_;
    std::string received_;      // read and not used yet
    std::size_t request_ = 0;   // the current one's index in the conversation
    std::size_t bodySize_ = 0;  // as announced by the current request
};

}  // namespace testsupport
