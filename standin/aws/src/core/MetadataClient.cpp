#include "core/MetadataClient.hpp"

#include <utility>

#include "core/EnvironmentVariable.hpp"
#include "core/PercentEncoding.hpp"
#include "core/Redirects.hpp"
#include "core/RequestChecks.hpp"
#include "core/Text.hpp"

namespace standin::aws {
namespace {

using Aws::Http::HttpMethod;

constexpr const char* tokenPath = "/latest/api/token";
constexpr const char* rolesPath = "/latest/meta-data/iam/security-credentials";
constexpr const char* zonePath = "/latest/meta-data/placement/availability-zone";

constexpr const char* tokenHeader = "x-aws-ec2-metadata-token";
constexpr const char* tokenLifeHeader = "x-aws-ec2-metadata-token-ttl-seconds";
constexpr const char* tokenLife = "21600";  // the longest there is, six hours

/// In bytes; the documents asked for have about a thousand.
constexpr std::size_t longestAnswer = 1024UL * 1024;

/// The service's way of saying that the request itself, not its version, is at fault.
constexpr int badRequest = 400;

Aws::Client::ClientConfiguration metadataConfiguration() {
    Aws::Client::ClientConfiguration configuration("default", true);
    configuration.connectTimeoutMs = 1000;
    configuration.requestTimeoutMs = 1000;
    configuration.httpRequestTimeoutMs = 2000;
    return configuration;
}

std::string withScheme(std::string endpoint) {
    while (!endpoint.empty() && endpoint.back() == '/')
        endpoint.pop_back();
    return endpoint.find("://") == std::string::npos ? "http://" + endpoint : endpoint;
}

/// Whether libcurl can't read another host out of it than we do.
bool isEndpoint(const std::string& url) {
    const bool http = url.rfind("http://", 0) == 0 || url.rfind("https://", 0) == 0;
    const auto host = url.find("://") + 3;
    return http && isAuthority(url.substr(host, url.find('/', host) - host)) &&
           url.find_first_of("?#") == std::string::npos;
}

/// Empty when the service gave none.
std::string textOf(const WireAnswer& answer) {
    const bool given = answer.code == CURLE_OK && answer.status == 200;
    return given ? std::string(trimmed(answer.body)) : std::string();
}

bool mayPass(const WireAnswer& answer) {
    return answer.code != CURLE_OK ||
           Aws::Http::IsRetryableHttpResponseCode(static_cast<Aws::Http::HttpResponseCode>(answer.status));
}

}  // namespace

std::string metadataEndpoint() {
    std::string endpoint = environmentVariable("AWS_EC2_METADATA_SERVICE_ENDPOINT");
    if (!endpoint.empty()) return endpoint;
    const bool ipv6 = lowerCase(environmentVariable("AWS_EC2_METADATA_SERVICE_ENDPOINT_MODE")) == "ipv6";
    return ipv6 ? "http://[fd00:ec2::254]" : "http://169.254.169.254";
}

std::string regionOfZone(const std::string& zone) {
    constexpr const char* digits = "0123456789";
    const auto number = zone.find_first_of(digits);
    if (number == std::string::npos) return zone;
    return zone.substr(0, zone.find_first_not_of(digits, number));
}

MetadataClient::MetadataClient(std::string endpoint) : endpoint_(withScheme(std::move(endpoint))) {}

std::string MetadataClient::credentials() {
    const std::lock_guard lock(mutex_);
    return askForCredentials();
}

std::string MetadataClient::region() {
    const std::lock_guard lock(mutex_);
    if (!region_.empty()) return region_;
    Headers headers;
    if (usesTokens_) {
        askForCredentials();  // for the token
        headers[tokenHeader] = token_;
    }
    region_ = regionOfZone(get(zonePath, headers));
    return region_;
}

std::string MetadataClient::askForCredentials() {
    if (!usesTokens_) return credentialsOfRole({});
    const WireAnswer answer = ask(HttpMethod::HTTP_PUT, tokenPath, {{tokenLifeHeader, tokenLife}});
    if (answer.status == badRequest) return {};
    token_ = textOf(answer);
    if (!isHeaderValue(token_)) token_.clear();
    usesTokens_ = !token_.empty();
    return credentialsOfRole(usesTokens_ ? Headers{{tokenHeader, token_}} : Headers{});
}

/// A machine has one role; of several, the first is taken.
std::string MetadataClient::credentialsOfRole(const Headers& headers) {
    const std::string roles = get(rolesPath, headers);
    if (roles.empty()) return {};
    return get(rolesPath + std::string("/") + encodePathSegment(roles.substr(0, roles.find('\n'))), headers);
}

std::string MetadataClient::get(const std::string& path, const Headers& headers) {
    return textOf(ask(HttpMethod::HTTP_GET, path, headers));
}

WireAnswer MetadataClient::ask(HttpMethod method, const std::string& path, Headers headers) {
    WireAnswer answer;
    answer.code = CURLE_URL_MALFORMAT;
    if (!isEndpoint(endpoint_)) return answer;
    headers["user-agent"] = Aws::Client::ComputeUserAgentString();
    const WireRequest request{method, endpoint_ + path, std::move(headers), nullptr, longestAnswer};
    answer = sendFollowing(connection(), request);
    return mayPass(answer) ? sendFollowing(connection(), request) : answer;
}

Connection& MetadataClient::connection() {
    if (!connection_) connection_ = std::make_unique<Connection>(metadataConfiguration());
    return *connection_;
}

}  // namespace standin::aws
