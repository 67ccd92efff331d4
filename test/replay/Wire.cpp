#include "replay/Wire.hpp"

#include "replay/Digest.hpp"
#include "replay/Signature.hpp"

#include <boost/algorithm/string.hpp>

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
    std::regex pattern;
    const char* replacement;
};

// The processor, the compiler and the language it was set to are the ones of the recording, so that other
// machines and other builds of the SDK can replay it.
const std::array<Placeholder, 8> placeholders{{
    {std::regex(R"(\b\d{8}T\d{6}Z)"), "{AMZDATE}"},
    {std::regex(R"((Credential=[^/,]*/)\d{8}/)"), "$1{DAY}/"},
    {std::regex(R"(Signature=[0-9a-f]{64}$)"), "Signature={HEX64}"},
    {std::regex(R"(^[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}$)"), "{UUID}"},
    {std::regex(R"( os/Linux/[^ ]+)"), " os/Linux/{KERNEL}"},
    {std::regex(R"( md/arch#[^ ]+)"), " md/arch#x86_64"},
    {std::regex(R"( lang/c\+\+#[^ ]+)"), " lang/c++#C++11"},
    {std::regex(R"( md/(GCC|Clang)#[^ ]+)"), " md/GCC#12.2.0"},
}};

/// Numbers things by their first appearance, from 1.
template <typename Thing>
class Numbering {
public:
    int of(const Thing& thing) {
        return numbers_.emplace(thing, static_cast<int>(numbers_.size()) + 1).first->second;
    }

private:
    std::map<Thing, int> numbers_;
};

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

long secondsAfter(const std::string& amzDate, long now) {
    std::tm fields{};
    if (!strptime(amzDate.c_str(), "%Y%m%dT%H%M%SZ", &fields)) return now;
    return timegm(&fields) - now;
}

Json describeInFull(const SeenRequest& request, const std::string& secretKey) {
    Json described{{"method", request.method},
                   {"target", request.target},
                   {"version", request.version},
                   {"path", request.target.substr(0, request.target.find('?'))},
                   {"query_sorted", describeQuery(request.target)},
                   {"headers", describeHeaders(request)},
                   {"tls", request.tls}};
    if (request.bodyRead && request.method != "CONNECT") described["body"] = describeBody(request);
    Json signature = describeSignature(request, secretKey);
    if (signature.is_null()) return described;
    signature["credential_scope"] = scopeWithPlaceholder(signature["credential_scope"]);
    described["signature"] = std::move(signature);
    return described;
}

Json describeInShort(const SeenRequest& request) {
    constexpr std::array<std::string_view, 5> recordedNames{"host", "expect", "amz-sdk-request",
                                                            "content-length", "range"};
    Json described{{"method", request.method}, {"target", request.target}};
    for (const Json& header : describeHeaders(request)) {
        const std::string name = boost::to_lower_copy(header[0].get<std::string>());
        if (std::find(recordedNames.begin(), recordedNames.end(), name) != recordedNames.end())
            described[name] = header[1];
    }
    if (!request.body.empty() || (request.bodyRead && !request.bodyComplete))
        described["body"] = describeBody(request);
    const Json signature = describeSignature(request, "");
    if (!signature.is_null())
        described["credential_scope"] = scopeWithPlaceholder(signature["credential_scope"]);
    return described;
}

// What is recorded only for some requests, or roughly, is compared only then and roughly.
void reduceTo(const Json& recorded, Json& described, const SeenRequest& request) {
    for (const char* name : {"credential_scope", "x_amz_date_minus_now_s_about", "invocation"})
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

Json describeHeaders(const SeenRequest& request) {
    Json headers = Json::array();
    std::size_t lineEnd = request.head.find("\r\n");
    while (lineEnd != std::string::npos) {
        const std::size_t start = lineEnd + 2;
        lineEnd = request.head.find("\r\n", start);
        const std::string line = request.head.substr(start, lineEnd - start);
        const std::size_t colon = line.find(": ");
        headers.push_back({line.substr(0, colon),
                           colon == std::string::npos ? "" : withPlaceholders(line.substr(colon + 2))});
    }
    return headers;
}

std::string withPlaceholders(std::string text) {
    for (const Placeholder& placeholder : placeholders)
        text = std::regex_replace(text, placeholder.pattern, placeholder.replacement);
    return text;
}

Json describeWire(const std::vector<SeenRequest>& requests, const Json& recorded, long now) {
    const std::string secretKey =
        recorded.value("client", Json::object()).value("secretKey", "SECRETEXAMPLE");
    const Json& recordedWire = recorded.at("wire");
    const bool full = std::any_of(recordedWire.begin(), recordedWire.end(),
                                  [](const Json& request) { return request.contains("headers"); });
    Numbering<int> connections;
    Numbering<std::string> invocations;
    Json wire = Json::array();
    for (const SeenRequest& request : chosen(requests, recorded)) {
        Json described = full ? describeInFull(request, secretKey) : describeInShort(request);
        described["connection"] = connections.of(request.connection);
        described["invocation"] = invocations.of(request.header("amz-sdk-invocation-id"));
        if (request.hasHeader("x-amz-date"))
            described["x_amz_date_minus_now_s_about"] = secondsAfter(request.header("x-amz-date"), now);
        const bool expected = wire.size() < recordedWire.size();
        reduceTo(expected ? recordedWire[wire.size()] : Json::object(), described, request);
        wire.push_back(std::move(described));
    }
    return wire;
}

}  // namespace replay
