#include "replay/LinkedCurl.hpp"

#include "support/servers/CurlWords.hpp"
#include "support/servers/ScriptedServer.hpp"

#include <curl/curl.h>

#include <memory>
#include <regex>
#include <stdexcept>

namespace replay {
namespace {

using testsupport::httpReply;
using testsupport::ScriptedServer;
using testsupport::Step;

// The address that libcurl names when that transfer has failed.
std::string addressAfter(const std::string& url, const std::string& proxy) {
    const std::unique_ptr<CURL, void (*)(CURL*)> transfer(curl_easy_init(), curl_easy_cleanup);
    curl_easy_setopt(transfer.get(), CURLOPT_URL, url.c_str());
    curl_easy_setopt(transfer.get(), CURLOPT_PROXY, proxy.c_str());
    curl_easy_setopt(transfer.get(), CURLOPT_NOSIGNAL, 1L);
    if (curl_easy_perform(transfer.get()) == CURLE_OK) throw std::runtime_error(url + " can't succeed");
    const char* address = nullptr;
    curl_easy_getinfo(transfer.get(), CURLINFO_PRIMARY_IP, &address);
    return address ? address : "";
}

std::string addressOfUntrusted() {
    testsupport::TestAuthority unknown;
    const ScriptedServer server({}, {unknown.issue({"127.0.0.1"}), true});
    return addressAfter("https://" + server.endpoint(), "");
}

std::string addressWithoutTunnel() {
    const ScriptedServer proxy({{Step::connectReply(), Step::send(httpReply(503))}});
    return addressAfter("https://server.example", "http://" + proxy.endpoint());
}

bool startsWith(const std::string& text, const char* start) {
    return text.rfind(start, 0) == 0;
}

// Where no request came and the address is known, TLS was to be spoken first; but 56 comes of an answer
// without it.
bool lacksHandshake(const Json& error, const Json& wire) {
    return wire.empty() && error["remote_ip"] != "" && !startsWith(error["message"], "curlCode: 56,");
}

bool endsWithATunnel(const Json& wire) {
    return !wire.empty() && wire.back().value("method", "") == "CONNECT";
}

void setAddress(Json& error, const std::string& address) {
    const std::string label = "Resolved remote host IP address: ";
    error["remote_ip"] = address;
    error["text"] =
        std::regex_replace(error["text"].get<std::string>(), std::regex(label + ".*"), label + address);
}

void takeAddresses(Json& recorded) {
    static const std::string withoutHandshake = addressOfUntrusted();
    static const std::string withoutTunnel = addressWithoutTunnel();
    const Json& wire = recorded["wire"];
    for (Json& outcome : recorded["outcomes"]) {
        if (!outcome.contains("error")) continue;
        Json& error = outcome["error"];
        if (!startsWith(error["message"], "curlCode: ")) continue;
        if (lacksHandshake(error, wire)) setAddress(error, withoutHandshake);
        if (endsWithATunnel(wire)) setAddress(error, withoutTunnel);
    }
}

bool repeatsAnUpload(const Json& recorded) {
    const Json& wire = recorded["wire"];
    const std::string method = wire.empty() ? "" : wire[0].value("method", "");
    return (method == "PUT" || method == "POST") && wire.size() > recorded["outcomes"].size();
}

bool isNewerThanTheRecordings() {
    constexpr unsigned recorded = 0x075801;  // 7.88.1
    return curl_version_info(CURLVERSION_NOW)->version_num > recorded;
}

void takeConnections(Json& recorded, const Json& seen) {
    if (!isNewerThanTheRecordings() || !repeatsAnUpload(recorded)) return;
    for (std::size_t i = 0; i < recorded["wire"].size() && i < seen["wire"].size(); ++i)
        recorded["wire"][i]["connection"] = seen["wire"][i]["connection"];
}

}  // namespace

Json asOfLinkedCurl(const Json& recorded, const Json& seen) {
    Json expected = Json::parse(testsupport::inWordsOfCurl(recorded.dump()));
    if (!expected.contains("wire")) return expected;
    takeAddresses(expected);
    takeConnections(expected, seen);
    return expected;
}

}  // namespace replay
