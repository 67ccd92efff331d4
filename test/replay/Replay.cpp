#include "replay/Replay.hpp"

#include "replay/Client.hpp"
#include "replay/LinkedCurl.hpp"
#include "replay/Operations.hpp"
#include "replay/Scene.hpp"
#include "replay/Times.hpp"
#include "replay/Wire.hpp"

#include <ctime>
#include <thread>

namespace replay {
namespace {

struct Calls {
    Json outcomes = Json::array();
    Json attempts = Json::array();
};

Calls makeCalls(const Json& recorded, const Scene& scene) {
    Calls calls;
    const Client client = makeClient(recorded.value("client", Json::object()), scene);
    const int repeat = recorded.value("repeat", 1);
    for (int i = 0; i < repeat; ++i) {
        if (i > 0) std::this_thread::sleep_for(std::chrono::milliseconds(recorded.value("pause_ms", 0)));
        *client.attempts = 0;
        const auto start = std::chrono::steady_clock::now();
        Json outcome = recorded["kind"] == "endpoint" ? resolveEndpoint(*client.endpoints, recorded)
                                                      : callOperation(*client.s3, recorded);
        addElapsed(outcome, start);
        calls.outcomes.push_back(std::move(outcome));
        calls.attempts.push_back(client.attempts->load());
    }
    return calls;
}

// A short text of a body is recorded as such, a long one by its digest only.
void dropUnrecordedBodies(const Json& recorded, Json& outcomes) {
    for (std::size_t i = 0; i < outcomes.size() && i < recorded.size(); ++i)
        if (outcomes[i].contains("result") && recorded[i].contains("result") &&
            !recorded[i]["result"].contains("body"))
            for (const char* name : {"body", "body_hex"})
                outcomes[i]["result"].erase(name);
}

Json describeCount(std::size_t requests, const Json& recorded) {
    if (recorded.is_string() && requests > endlessRequests) return recorded;
    return requests;
}

std::string at(const Json& value, const Json::json_pointer& place) {
    return value.contains(place) ? value[place].dump(-1, ' ', false, Json::error_handler_t::replace)
                                 : "nothing";
}

}  // namespace

Json replayCase(const RecordedCase& recordedCase) {
    const Json& recorded = recordedCase.recorded;
    const long now = std::time(nullptr);
    Scene scene(recordedCase);
    Calls calls = makeCalls(recorded, scene);
    scene.server().waitForConnectionsToEnd();
    const std::vector<testsupport::SeenRequest> requests = scene.server().requests();

    dropUnrecordedBodies(recorded["outcomes"], calls.outcomes);
    Json seen{{"outcomes", std::move(calls.outcomes)},
              {"requests_seen", describeCount(requests.size(), recorded["requests_seen"])},
              {"wire", describeWire(requests, recorded, now)}};
    if (calls.attempts.size() > 1)
        seen["attempts"] = std::move(calls.attempts);
    else if (calls.attempts[0] != 0)
        seen["attempts"] = calls.attempts[0];
    return scene.asRecorded(std::move(seen));
}

std::string printable(const Json& value) {
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::vector<std::string> differences(const Json& recorded, const Json& seen) {
    const Json expected = asOfLinkedCurl(recorded, seen);
    std::vector<std::string> lines;
    for (const Json& change : Json::diff(expected, seen)) {
        const std::string place = change["path"];
        const Json::json_pointer pointer(place);
        lines.push_back(place + "\n  expected " + at(expected, pointer) + "\n  seen     " +
                        at(seen, pointer));
    }
    return lines;
}

}  // namespace replay
