#include "http/Request.hpp"

#include <utf8.h>

#include <algorithm>
#include <optional>

#include "operations/S3Error.hpp"
#include "text/Encoding.hpp"
#include "text/Text.hpp"

namespace s3server {
namespace {

constexpr std::size_t longestKey = 1024;

std::string_view withoutPort(std::string_view host) {
    if (startsWith(host, "[")) return host.substr(0, host.find(']') + 1);
    return host.substr(0, host.find(':'));
}

/// What is left of a host name when `name` and the dot before it are taken from its end.
std::optional<std::string_view> labelBefore(std::string_view host, std::string_view name) {
    if (host == name) return std::string_view();
    if (endsWith(host, name) && host[host.size() - name.size() - 1] == '.')
        return host.substr(0, host.size() - name.size() - 1);
    return std::nullopt;
}

/// The bucket in BUCKET.s3.REGION.amazonaws.com, BUCKET.s3-REGION.amazonaws.com and the dual-stack form;
/// nothing for any other host.
std::optional<std::string_view> bucketOfRegionalHost(std::string_view host) {
    const auto before = labelBefore(host, "amazonaws.com");
    if (!before || before->empty()) return std::nullopt;
    const auto lastDot = before->rfind('.');
    const auto last = lastDot == std::string_view::npos ? *before : before->substr(lastDot + 1);
    if (startsWith(last, "s3-")) return before->substr(0, lastDot == std::string_view::npos ? 0 : lastDot);
    if (lastDot == std::string_view::npos) return std::nullopt;
    const auto service = before->substr(0, lastDot);
    for (const std::string_view name : {"s3.dualstack", "s3"})
        if (const auto bucket = labelBefore(service, name)) return bucket;
    return std::nullopt;
}

std::string decodedOrRefused(std::optional<std::string> text) {
    if (!text || !utf8::is_valid(text->begin(), text->end())) throw S3Error("InvalidURI");
    return std::move(*text);
}

/// A proxy is asked for http://HOST/PATH; that host counts, not the header (RFC 9112, section 3.2.2).
std::string_view withoutAuthority(std::string_view target, std::string& host) {
    const auto scheme = target.find("://");
    if (startsWith(target, "/") || scheme == std::string_view::npos) return target;
    const auto authority = target.substr(scheme + 3);
    const auto end = std::min(authority.find_first_of("/?"), authority.size());
    host = authority.substr(0, end);
    return end == authority.size() ? "/" : authority.substr(end);
}

void readQuery(Request& request, std::string_view query) {
    for (const std::string_view piece : split(query, '&')) {
        if (piece.empty()) continue;
        const auto [name, value] = splitAtFirst(piece, '=');
        request.query.emplace_back(decodedOrRefused(queryDecoded(name)),
                                   decodedOrRefused(queryDecoded(value)));
    }
}

void readPath(Request& request, const std::string& hostBucket) {
    if (!startsWith(request.path, "/")) throw S3Error("InvalidURI");
    auto rest = std::string_view(request.path).substr(1);
    if (hostBucket.empty()) {
        const auto [bucket, key] = splitAtFirst(rest, '/');
        request.bucket = decodedOrRefused(percentDecoded(bucket));
        rest = key;
    } else {
        request.bucket = hostBucket;
    }
    request.key = decodedOrRefused(percentDecoded(rest));
    if (request.bucket.empty() && !request.key.empty()) throw S3Error("InvalidBucketName");
}

}  // namespace

std::string_view Request::header(std::string_view name) const {
    return headerText(headers, name);
}

bool Request::hasHeader(std::string_view name) const {
    return findHeader(headers, name) != nullptr;
}

const std::string* Request::parameter(std::string_view name) const {
    return findHeader(query, name);
}

std::string Request::parameterOr(std::string_view name, std::string_view otherwise) const {
    const std::string* const value = parameter(name);
    return value ? *value : std::string(otherwise);
}

std::string bucketOfHost(std::string_view hostHeader, const std::vector<std::string>& hostNames) {
    const std::string host = lowered(withoutPort(hostHeader));
    if (const auto bucket = bucketOfRegionalHost(host)) return std::string(*bucket);
    for (const std::string& name : hostNames)
        if (const auto bucket = labelBefore(host, lowered(name))) return std::string(*bucket);
    return {};
}

void locate(Request& request, const std::vector<std::string>& hostNames) {
    std::string host(request.header("host"));
    const std::string_view target = withoutAuthority(request.target, host);
    const auto [path, query] = splitAtFirst(target, '?');
    request.path = path;
    readPath(request, bucketOfHost(host, hostNames));
    readQuery(request, query);
    if (request.key.size() > longestKey) {
        throw S3Error("KeyTooLongError")
            .with("Size", std::to_string(request.key.size()))
            .with("MaxSizeAllowed", std::to_string(longestKey));
    }
}

}  // namespace s3server
