#pragma once

#include <cstddef>
#include <mutex>
#include <string>

#include "support/servers/ScriptedServer.hpp"

namespace testsupport {

/// What a machine in Amazon EC2 may ask about itself: a token, then the credentials of its one role, and the
/// zone "eu-north-1b" where it is. The credentials' access key is said when it is made, or later; the secret
/// key is "secret-of-" it, and the session token "token-of-" it. All members may be called from any thread.
class MetadataService {
public:
    enum class Manner {
        Right,   ///< answers at once
        Slow,    ///< answers after a while, and soon enough
        Silent,  ///< takes requests and never answers
        Wrong,   ///< answers everything with a page that is meant for people
        Without  ///< has nothing of what is asked for
    };

    explicit MetadataService(Manner manner = Manner::Right, std::string accessKey = "machine");

    /// The access key of the credentials from now on.
    void give(const std::string& accessKey);

    /// From now on, credentials without any text.
    void giveNothing();

    /// "http://127.0.0.1:PORT"
    std::string url() const { return "http://" + server_.endpoint(); }

    /// Requests so far.
    std::size_t asked() const { return server_.requests().size(); }

private:
    Script script(Manner manner);
    std::string answer() const;
    std::string document() const;

    mutable std::mutex mutex_;
    std::string accessKey_;
    bool givesNothing_ = false;
    ScriptedServer server_;
};

}  // namespace testsupport
