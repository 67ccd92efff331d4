#pragma once

#include "replay/RecordedCase.hpp"
#include "support/servers/HeldPort.hpp"
#include "support/servers/ScriptedServer.hpp"

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace replay {

/// What surrounds the client in one case: the server that plays the recorded replies, at a plain port and,
/// where the case names it, at one with TLS; a port where nothing listens; certificates. The recorded text
/// names fixed ports and files; the scene translates to the live ones and back.
class Scene {
public:
    explicit Scene(const RecordedCase& recordedCase);

    const testsupport::ScriptedServer& server() const { return *server_; }

    /// Recorded ports and file placeholders replaced by the live ones.
    std::string live(std::string text) const;

    std::uint16_t livePort(int recordedPort) const;

    /// The opposite, also for the dates the server sent, throughout the strings of a value.
    Json asRecorded(Json value) const;

private:
    struct Translation {
        std::string recorded;
        std::string live;
    };

    void translatePort(const std::string& recorded, unsigned live);
    void addReplies(const Json& replies, bool endless);
    testsupport::Script scriptFrom(const Json& steps);
    testsupport::Step stepFrom(const Json& step);
    testsupport::Step sendStep(const std::string& recorded);
    std::string dated(std::string text);

    std::vector<Translation> translations_;
    mutable std::mutex mutex_;
    std::vector<std::string> sentDates_;  // guarded by mutex_, filled by the server's threads
    testsupport::ClosedPort closed_;
    std::unique_ptr<testsupport::ScriptedServer> server_;  // uses the others until it ends
};

/// More requests than this count as endless.
constexpr std::size_t endlessRequests = 1000;

}  // namespace replay
