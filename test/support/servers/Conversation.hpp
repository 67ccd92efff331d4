#pragma once

#include "support/servers/Script.hpp"

#include <deque>
#include <mutex>

namespace testsupport {

/// The scripts still to be used and the requests seen so far, shared by a server's connections. All members
/// may be called from any thread.
class Conversation {
public:
    Conversation(std::vector<Script> scripts, bool repeatLast);

    void expect(Script script);

    struct Turn {
        std::size_t request;  ///< index in requests()
        Script script;
    };

    /// Records the head of a request and gives the script that answers it.
    Turn begin(SeenRequest head);

    void recordBody(std::size_t request, std::string body, bool complete);

    std::vector<SeenRequest> requests() const;
    std::size_t unusedScripts() const;
    std::size_t unexpectedRequests() const;

private:
    Script nextScript(bool connect);

    mutable std::mutex mutex_;
    std::deque<Script> scripts_;
    Script last_;
    bool repeatLast_;
    std::size_t unexpected_ = 0;
    std::vector<SeenRequest> requests_;
};

}  // namespace testsupport
