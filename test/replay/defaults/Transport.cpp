#include "replay/Client.hpp"
#include "replay/Outcomes.hpp"
#include "replay/Times.hpp"
#include "replay/defaults/Observers.hpp"
#include "replay/defaults/Setting.hpp"
#include "support/servers/HeldPort.hpp"

#include <aws/s3/model/HeadBucketRequest.h>

namespace replay {
namespace {

/// The case with a server that does these steps for each request.
RecordedCase answered(Json recorded, const Json& steps) {
    recorded["replies"] = Json::array({steps});
    recorded["requests_seen"] = 1;
    return {recorded["id"], recorded};
}

Aws::S3::Model::HeadBucketOutcome headBucket(const Client& client) {
    Aws::S3::Model::HeadBucketRequest request;
    request.SetBucket("bucket");
    return client.s3->HeadBucket(request);
}

}  // namespace

Json observeEnvironmentProxy(const Json& recorded) {
    const testsupport::ClosedPort closed;
    const Setting setting(recorded, {{"{CLOSEDPORT}", std::to_string(closed.number())}});
    const Scene scene(answered(recorded, Json::array({{{"send", testsupport::httpReply(200)}}})));
    const auto outcome = headBucket(makeClient(Json::object(), scene));
    return {{"success", outcome.IsSuccess()}, {"requests_seen", scene.server().requests().size()}};
}

Json observeConnectTimeout(const Json& recorded) {
    const Setting setting(recorded);
    const Scene scene(answered(recorded, Json::array({{{"sleep_ms", 20000}}})));
    const testsupport::CrowdedPort crowded;
    Json settings = recorded["client"];
    settings["maxRetries"] = 0;
    if (recorded["peer"] != "accepts") settings["endpoint"] = "127.0.0.1:" + std::to_string(crowded.number());
    const Client client = makeClient(settings, scene);
    const auto start = std::chrono::steady_clock::now();
    const auto outcome = headBucket(client);
    Json seen{{"success", outcome.IsSuccess()}, {"error", describe(outcome.GetError())}};
    addElapsed(seen, start);
    if (recorded["observed"].contains("attempts")) seen["attempts"] = client.attempts->load();
    return seen;
}

}  // namespace replay
