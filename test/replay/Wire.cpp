#include "replay/Wire.hpp"

#include "replay/Digest.hpp"
#include "replay/Signature.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <ctime>
#include <map>
#include <regex>

namespace replay {
namespace {

using testsupport::SeenRequest;

// Clock offsets are recorded roughly; the ones that matter are 200 s and more.
constexpr long clockToleranceS = 60;

struct Placeholder {
    const char* pattern;
    const char* replacement;
};

// The compiler and the processor are the ones of the recording, so that other machines can replay it.
constexpr std::array<Placeholder, 7> placeholders{{
    {R"(\b\d{8}T\d{6}Z)", "{AMZDATE}"},
    {R"((Credential=[^/,]*/)\d{8}/)", "$1{DAY}/"},
    {R"(Signature=[0-9a-f]{64}$)", "Signature={HEX64}"},
    {R"(^[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}$)", "{UUID}"},
    {R"( os/Linux/[^ ]+)", " os/Linux/{KERNEL}"},
    {R"( md/arch#[^ ]+)", " md/arch#x86_64"},
    {R"( md/GCC#[^ ]+)", " md/GCC#12.2.0"},
}};

std::string scopeWithPlaceholder(const std::string& scope) {
    return std::regex_replace(scope, std::regex("^([^/]*/)[0-9]{8}/"), "$1{DAY}/");
}

Json describeBody(const SeenRequest& request) {
    Json body{{"len", request.body.size()}, {"complete", request.bodyComplete}};
    if (!request.body.empty()) body["sha256"] = sha256Hex(request.body);
    return body;
}

Json describeQuery(const std::string& target) {
    Json parameters = Json::array();
    std::size_t start = target.find('?');
    while (start < target.size()) {
        const std::size_t end = std::min(target.find('&', start + 1), target.size());
        const std::string parameter = target.substr(start + 1, end - start - 1);
        const std::size_t equals = std::min(parameter.find('='), parameter.size());
        parameters.push_back(
            {parameter.substr(0, equals), equals < parameter.size() ? parameter.substr(equals + 1) : ""});
        start = end;
    }
    std::sort(parameters.begin(), parameters.end());
    return parameters;
}

Json describeInFull(const SeenRequest& request, const std::string& secretKey) {
    Json described{{"method", request.method},
                   {"target", request.target},
                   {"version", request.version},
                   {"path", request.target.substr(0, request.target.find('?'))},
                   {"query_sorted", describeQuery(request.target)},
                   {"headers", Json::array()},
                   {"tls", request.tls}};
    for (const auto& [name, value] : request.headers)
        described["headers"].push_back({name, withPlaceholders(value)});
    if (request.bodyRead && request.method != "CONNECT") described["body"] = describeBody(request);
    Json signature = describeSignature(request, secretKey);
    if (signature.is_null()) return described;
    signature["credential_scope"] = scopeWithPlaceholder(signature["credential_scope"]);
    described["signature"] = std::move(signature);
    return described;
}

long secondsAfter(const std::string& amzDate, long now) {
    std::tm fields{};
    if (!strptime(amzDate.c_str(), "%Y%m%dT%H%M%SZ", &fields)) return now;
    return timegm(&fields) - now;
}

Json describeInShort(const SeenRequest& request, long now) {
    Json described{{"method", request.method}, {"target", request.target}, {"host", request.header("host")}};
    for (const char* name : {"expect", "amz-sdk-request", "content-length", "range"})
        if (request.hasHeader(name)) described[name] = withPlaceholders(request.header(name));
    if (!request.body.empty() || (request.bodyRead && !request.bodyComplete))
        described["body"] = describeBody(request);
    if (request.hasHeader("x-amz-date"))
        described["x_amz_date_minus_now_s_about"] = secondsAfter(request.header("x-amz-date"), now);
    const Json signature = describeSignature(request, "");
    if (!signature.is_null())
        described["credential_scope"] = scopeWithPlaceholder(signature["credential_scope"]);
    return described;
}

// What is recorded only for some requests, or roughly, is compared only then and roughly.
void reduceTo(const Json& recorded, Json& described, const SeenRequest& request) {
    for (const char* name : {"credential_scope", "x_amz_date_minus_now_s_about"})
        if (!recorded.contains(name)) described.erase(name);
    if (recorded.contains("x_amz_date_minus_now_s_about") &&
        described.contains("x_amz_date_minus_now_s_about")) {
        const long offset = recorded["x_amz_date_minus_now_s_about"];
        Json& seen = described["x_amz_date_minus_now_s_about"];
        if (std::labs(seen.get<long>() - offset) <= clockToleranceS) seen = offset;
    }
    if (recorded.contains("body") && recorded["body"].contains("text") && described.contains("body"))
        described["body"]["text"] = request.body;
}

// A long exchange is recorded by its first requests and, if it ended, its last one.
std::vector<SeenRequest> chosen(const std::vector<SeenRequest>& requests, const Json& recorded) {
    const std::size_t count = recorded.at("wire").size();
    const bool endless = recorded.at("requests_seen").is_string();
    if (!endless && recorded["requests_seen"] == count) return requests;
    if (requests.size() <= count) return requests;
    std::vector<SeenRequest> some(requests.begin(), requests.begin() + static_cast<std::ptrdiff_t>(count));
    if (!endless) some.back() = requests.back();
    return some;
}

}  // namespace

std::string withPlaceholders(std::string text) {
    for (const Placeholder& placeholder : placeholders)
        text = std::regex_replace(text, std::regex(placeholder.pattern), placeholder.replacement);
    return text;
}

Json describeWire(const std::vector<SeenRequest>& requests, const Json& recorded, long now) {
    const std::string secretKey =
        recorded.value("client", Json::object()).value("secretKey", "SECRETEXAMPLE");
    const Json& recordedWire = recorded.at("wire");
    const bool full = std::any_of(recordedWire.begin(), recordedWire.end(),
                                  [](const Json& request) { return request.contains("headers"); });
    std::map<int, int> connections;  // numbered anew, by their first request
    Json wire = Json::array();
    for (const SeenRequest& request : chosen(requests, recorded)) {
        Json described = full ? describeInFull(request, secretKey) : describeInShort(request, now);
        described["connection"] =
            connections.emplace(request.connection, static_cast<int>(connections.size()) + 1).first->second;
        const bool expected = wire.size() < recordedWire.size();
        reduceTo(expected ? recordedWire[wire.size()] : Json::object(), described, request);
        wire.push_back(std::move(described));
    }
    return wire;
}

}  // namespace replay
