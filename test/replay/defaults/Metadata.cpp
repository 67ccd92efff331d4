#include "replay/Times.hpp"
#include "replay/Wire.hpp"
#include "replay/defaults/Descriptions.hpp"
#include "replay/defaults/Observers.hpp"
#include "replay/defaults/Setting.hpp"
#include "support/servers/HeldPort.hpp"
#include "support/servers/ScriptedServer.hpp"

#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/client/ClientConfiguration.h>

#include <thread>

namespace replay {
namespace {

using Aws::Auth::InstanceProfileCredentialsProvider;
using testsupport::ClosedPort;
using testsupport::ScriptedServer;
using testsupport::SeenRequest;
using testsupport::Step;

constexpr const char* goodCredentials =
    R"({"Code": "Success", "LastUpdated": "2024-01-01T00:00:00Z", "Type": "AWS-HMAC", "AccessKeyId": "IMDSKEY", )"
    R"("SecretAccessKey": "IMDSSECRET", "Token": "IMDSTOKEN", "Expiration": "2099-01-01T00:00:00Z"})";

struct Answer {
    const char* request;
    const char* body;
};
constexpr Answer goodAnswers[] = {
    {"PUT /latest/api/token", "TOKENVALUE"},
    {"GET /latest/meta-data/iam/security-credentials", "role-one"},
    {"GET /latest/meta-data/iam/security-credentials/role-one", goodCredentials},
    {"GET /latest/meta-data/placement/availability-zone", "eu-north-1b"},
};

/// Longer than any of the service's clients waits.
constexpr std::chrono::seconds hang{20};

testsupport::Script goodAnswer(const std::string& request) {
    for (const Answer& answer : goodAnswers)
        if (request == answer.request) return {Step::send(testsupport::httpReply(200, {}, answer.body))};
    return {Step::send(testsupport::httpReply(404))};
}

testsupport::Script answerTo(const Json& request, const Json& answers) {
    const std::string line =
        request["method"].get<std::string>() + " " + request["target"].get<std::string>();
    const auto own = answers.find(line);
    const auto any = answers.find(request["method"].get<std::string>() + " *");
    if (own == answers.end() && any == answers.end()) return goodAnswer(line);
    const std::string text = own != answers.end() ? *own : *any;
    if (text == "HANG") return {Step::sleep(hang)};
    if (text == "CLOSE") return {Step::close()};
    return {Step::send(text)};
}

std::vector<testsupport::Script> conversation(const Json& recorded) {
    std::vector<testsupport::Script> scripts;
    for (const Json& request : recorded["requests"])
        scripts.push_back(answerTo(request, recorded["answers"]));
    return scripts;
}

/// Counts the reloads, and holds them back as long as the time isn't there if it is to guard them.
class CountingProvider : public InstanceProfileCredentialsProvider {
public:
    CountingProvider(long refreshRateMs, bool guarded)
        : InstanceProfileCredentialsProvider(refreshRateMs),
          refreshRateMs_(refreshRateMs),
          guarded_(guarded) {}

    int reloads() const { return reloads_; }

protected:
    void Reload() override {
        ++reloads_;
        if (!guarded_ || IsTimeToRefresh(refreshRateMs_)) InstanceProfileCredentialsProvider::Reload();
    }

private:
    long refreshRateMs_;
    bool guarded_;
    int reloads_ = 0;
};

Json askForCredentials(const Json& asked) {
    CountingProvider provider(asked["refresh_ms"], asked["guarded"]);
    Json calls = Json::array();
    for (int i = 0; i < asked["calls"]; ++i) {
        if (i > 0) std::this_thread::sleep_for(std::chrono::milliseconds(asked.value("pause_ms", 0)));
        const auto start = std::chrono::steady_clock::now();
        Json call = describe(provider.GetAWSCredentials());
        addElapsed(call, start);
        call["reload_calls_so_far"] = provider.reloads();
        calls.push_back(std::move(call));
    }
    return {{"calls", std::move(calls)}};
}

Json makeConfigurations(const Json& recorded) {
    Json made = Json::array();
    for (const Json& wanted : recorded) {
        const auto start = std::chrono::steady_clock::now();
        const Aws::Client::ClientConfiguration configuration;
        Json description = only(wanted, describe(configuration));
        addElapsed(description, start);
        made.push_back(std::move(description));
    }
    return {{"configurations", std::move(made)}};
}

Json describe(const std::vector<SeenRequest>& requests, const Setting& setting) {
    Json described = Json::array();
    for (const SeenRequest& request : requests) {
        Json headers = describeHeaders(request);
        for (Json& header : headers)
            header[1] = setting.asRecorded(header[1]);
        described.push_back({{"method", request.method}, {"target", request.target}, {"headers", headers}});
    }
    return described;
}

}  // namespace

Json observeMetadata(const Json& recorded) {
    ScriptedServer service(conversation(recorded));
    const ClosedPort closed;
    const Setting setting(recorded, {{"{METAPORT}", std::to_string(service.port())},
                                     {"{CLOSEDPORT}", std::to_string(closed.number())}});
    Json seen = recorded.contains("provider") ? askForCredentials(recorded["provider"])
                                              : makeConfigurations(recorded["observed"]["configurations"]);
    return {{"observed", std::move(seen)}, {"requests", describe(service.requests(), setting)}};
}

}  // namespace replay
