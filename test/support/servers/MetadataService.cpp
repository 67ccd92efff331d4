#include "support/servers/MetadataService.hpp"

#include <utility>

namespace testsupport {

namespace {

using std::chrono::milliseconds;

/// Clients wait a second for each answer.
constexpr milliseconds soonEnough{200};
constexpr milliseconds muchTooLong{60'000};

constexpr const char* rolesPath = "/latest/meta-data/iam/security-credentials";

ScriptedServer::Options repeating() {
    ScriptedServer::Options options;
    options.repeatLast = true;
    return options;
}

}  // namespace

MetadataService::MetadataService(Manner manner, std::string accessKey)
    : accessKey_(std::move(accessKey)), server_({script(manner)}, repeating()) {}

void MetadataService::give(const std::string& accessKey) {
    const std::lock_guard lock(mutex_);
    accessKey_ = accessKey;
    givesNothing_ = false;
}

void MetadataService::giveNothing() {
    const std::lock_guard lock(mutex_);
    givesNothing_ = true;
}

Script MetadataService::script(Manner manner) {
    switch (manner) {
        case Manner::Slow:
            return {Step::sleep(soonEnough), Step::sendMade([this] { return answer(); })};
        case Manner::Silent:
            return {Step::sleep(muchTooLong)};
        case Manner::Wrong:
            return {Step::send(httpReply(200, {{"Content-Type", "text/html"}}, "<h1>Sign in, please</h1>"))};
        case Manner::Without:
            return {Step::send(httpReply(404))};
        case Manner::Right:
            break;
    }
    return {Step::sendMade([this] { return answer(); })};
}

// A machine asks one thing after the other, so the last request is the one to answer.
std::string MetadataService::answer() const {
    const std::string target = server_.requests().back().target;
    if (target == "/latest/api/token") return httpReply(200, {}, "session");
    if (target == rolesPath) return httpReply(200, {}, "role");
    if (target == rolesPath + std::string("/role")) return httpReply(200, {}, document());
    if (target == "/latest/meta-data/placement/availability-zone") return httpReply(200, {}, "eu-north-1b");
    return httpReply(404);
}

std::string MetadataService::document() const {
    const std::lock_guard lock(mutex_);
    const auto text = [this](const std::string& value) { return '"' + (givesNothing_ ? "" : value) + '"'; };
    return R"({"Code": "Success", "AccessKeyId": )" + text(accessKey_) + R"(, "SecretAccessKey": )" +
           text("secret-of-" + accessKey_) + R"(, "Token": )" + text("token-of-" + accessKey_) +
           R"(, "Expiration": "2099-01-01T00:00:00Z"})";
}

}  // namespace testsupport
