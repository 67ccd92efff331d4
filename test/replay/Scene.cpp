#include "replay/Scene.hpp"

#include <openssl/evp.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <regex>
#include <stdexcept>

namespace replay {
namespace {

using std::chrono::milliseconds;
using testsupport::Script;
using testsupport::ScriptedServer;
using testsupport::Step;

constexpr const char* recordedPlainPort = "18080";
constexpr const char* recordedTlsPort = "18443";
constexpr const char* recordedDeadPort = "18099";

// An endless exchange is cut by a reset after so many requests, twice, as the client tries twice.
constexpr std::size_t requestsBeforeReset = 600;

struct Certificates {
    testsupport::TestAuthority authority;
    testsupport::TestAuthority otherAuthority;
    testsupport::CertificateFiles server = authority.issue({"127.0.0.1"});
};

Certificates& certificates() {
    static Certificates made;
    return made;
}

void replaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

std::string decodeBase64(const std::string& text) {
    std::string bytes(text.size(), '\0');
    const int size =
        EVP_DecodeBlock(reinterpret_cast<unsigned char*>(bytes.data()),
                        reinterpret_cast<const unsigned char*>(text.data()), static_cast<int>(text.size()));
    if (size < 0) throw std::runtime_error("not base64: " + text);
    const auto padding = std::count(text.begin(), text.end(), '=');
    bytes.resize(static_cast<std::size_t>(size - padding));
    return bytes;
}

std::string httpDate(std::time_t time) {
    std::tm fields{};
    gmtime_r(&time, &fields);
    std::array<char, 64> text{};
    return {text.data(), std::strftime(text.data(), text.size(), "%a, %d %b %Y %H:%M:%S GMT", &fields)};
}

bool mentions(const Json& value, const std::string& text) {
    return value.dump().find(text) != std::string::npos;
}

std::unique_ptr<ScriptedServer> serverFor(const Json& recorded) {
    ScriptedServer::Options options;
    options.repeatLast = true;
    options.tlsToo = mentions(recorded, recordedTlsPort);
    if (options.tlsToo || mentions(recorded, "proxyHost")) options.certificate = certificates().server;
    return std::make_unique<ScriptedServer>(std::vector<Script>{}, options);
}

}  // namespace

Scene::Scene(const RecordedCase& recordedCase) : server_(serverFor(recordedCase.recorded)) {
    const Json& recorded = recordedCase.recorded;
    translatePort(recordedPlainPort, server_->port());
    translatePort(recordedDeadPort, closed_.number());
    if (server_->secondPort() != 0) {
        translatePort(recordedTlsPort, server_->secondPort());
        translations_.push_back({"{CAFILE}", certificates().authority.caFile()});
        translations_.push_back({"{OTHERCA}", certificates().otherAuthority.caFile()});
    }
    if (recorded.contains("replies")) addReplies(recorded["replies"], recorded["requests_seen"].is_string());
}

void Scene::translatePort(const std::string& recorded, unsigned live) {
    translations_.push_back({":" + recorded, ":" + std::to_string(live)});
}

std::string Scene::live(std::string text) const {
    for (const Translation& translation : translations_)
        replaceAll(text, translation.recorded, translation.live);
    return text;
}

std::uint16_t Scene::livePort(int recordedPort) const {
    const std::string text = live(":" + std::to_string(recordedPort));
    return static_cast<std::uint16_t>(std::stoul(text.substr(1)));
}

Json Scene::asRecorded(Json value) const {
    if (value.is_structured()) {
        for (Json& element : value)
            element = asRecorded(std::move(element));
    } else if (value.is_string()) {
        auto& text = value.get_ref<std::string&>();
        for (const Translation& translation : translations_)
            replaceAll(text, translation.live, translation.recorded);
        const std::lock_guard lock(mutex_);
        for (const std::string& date : sentDates_)
            replaceAll(text, date, "{NOW}");
    }
    return value;
}

void Scene::addReplies(const Json& replies, bool endless) {
    for (const Json& steps : replies)
        server_->expect(scriptFrom(steps));
    if (!endless) return;
    const Script last = scriptFrom(replies.back());
    const Script cut{Step::send("HTTP/1.1 307 Cut Short\r\n"),
                     Step::reset()};  // not an answer, but too much for a silent retry
    for (std::size_t i = replies.size(); i < 2 * requestsBeforeReset; ++i)
        server_->expect((i + 1) % requestsBeforeReset == 0 ? cut : last);
}

Script Scene::scriptFrom(const Json& steps) {
    Script script;
    for (const Json& step : steps)
        script.push_back(stepFrom(step));
    return script;
}

Step Scene::stepFrom(const Json& step) {
    if (step.contains("send")) return sendStep(step["send"]);
    if (step.contains("send_b64")) return Step::send(decodeBase64(step["send_b64"]));
    if (step.contains("send_repeat")) return Step::sendRepeat(step["send_repeat"][0], step["send_repeat"][1]);
    if (step.contains("drip")) return Step::drip(step["drip"], milliseconds(step["each_ms"]));
    if (step.contains("sleep_ms")) return Step::sleep(milliseconds(step["sleep_ms"]));
    if (step.contains("read_body")) return Step::readBody();
    if (step.contains("no_read_body")) return Step::noReadBody();
    if (step.contains("close")) return Step::close();
    if (step.contains("rst")) return Step::reset();
    if (step.contains("connect_reply")) return Step::connectReply();
    throw std::runtime_error("unknown step " + step.dump());
}

Step Scene::sendStep(const std::string& recorded) {
    std::string text = live(recorded);
    if (text.find("{DATE") == std::string::npos) return Step::send(std::move(text));
    return Step::sendMade([this, text = std::move(text)] { return dated(text); });
}

std::string Scene::dated(std::string text) {
    static const std::regex placeholder(R"(\{DATE([+-]\d+)?\})");
    std::smatch found;
    while (std::regex_search(text, found, placeholder)) {
        const long shift = found[1].matched ? std::stol(found[1]) : 0;
        const std::string date = httpDate(std::time(nullptr) + shift);
        text.replace(static_cast<std::size_t>(found.position()), static_cast<std::size_t>(found.length()),
                     date);
        const std::lock_guard lock(mutex_);
        sentDates_.push_back(date);
    }
    return text;
}

}  // namespace replay
