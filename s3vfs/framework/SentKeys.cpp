#include "framework/SentKeys.hpp"

#include <aws/core/endpoint/AWSEndpoint.h>
#include <aws/s3/model/UploadPartCopyRequest.h>

#include <algorithm>
#include <charconv>
#include <string_view>

#include "framework/ProbeRequest.hpp"

namespace s3vfs {

namespace {

constexpr const char* bucket = "bucket";

// RFC 3986. What isn't % and two hexadecimal digits stays as it is.
std::string percentDecoded(std::string_view text) {
    std::string decoded;
    while (!text.empty()) {
        unsigned char byte = 0;
        const char* const digits = text.data() + 1;
        const bool isEncoded = text.front() == '%' && text.size() > 2 &&
                               std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2;
        decoded += isEncoded ? static_cast<char>(byte) : text.front();
        text.remove_prefix(isEncoded ? 3 : 1);
    }
    return decoded;
}

// The path of requests for the object, as the SDK writes it.
std::string writtenPath(const std::string& key) {
    constexpr std::string_view server = "http://localhost";
    Aws::Endpoint::AWSEndpoint endpoint;
    endpoint.SetURL(std::string(server) + "/" + bucket);
    endpoint.AddPathSegments(key);
    const std::string url = endpoint.GetURL();
    return url.substr(std::min(server.size(), url.size()));
}

// The same for the source of a copy.
std::string writtenSource(const std::string& key) {
    Aws::S3::Model::UploadPartCopyRequest request;
    request.SetCopySource(std::string(bucket) + "/" + key);
    const auto headers = request.GetRequestSpecificHeaders();
    const auto source = headers.find("x-amz-copy-source");
    return source == headers.end() ? "" : "/" + source->second;
}

bool hasDotSegment(const std::string& key) {
    std::string_view rest = key;
    while (true) {
        const auto segment = rest.substr(0, rest.find('/'));
        if (segment == "." || segment == "..") return true;
        if (segment.size() == rest.size()) return false;
        rest.remove_prefix(segment.size() + 1);
    }
}

// Nothing when the path, still encoded, is the key's in the bucket.
std::optional<std::string> whyNot(const std::string& path, const std::string& key) {
    const std::string parent = std::string("/") + bucket + "/";
    const std::string decoded = percentDecoded(path);
    if (decoded == parent + key) return std::nullopt;
    const bool isInside = decoded.compare(0, parent.size(), parent) == 0 && decoded.size() > parent.size();
    if (!isInside) return "with it, this AWS SDK would address no object of the bucket";
    return "this AWS SDK would send it as \"" + decoded.substr(parent.size()) + "\"";
}

}  // namespace

std::optional<std::string> whyNotAddressable(const std::string& key) {
    if (key.empty()) return "it is empty";
    if (auto reason = whyNot(writtenPath(key), key)) return reason;
    if (auto reason = whyNot(writtenSource(key), key)) return reason;
    if (!hasDotSegment(key)) return std::nullopt;
    const auto probe = probeRequest(bucket, key);
    if (!probe.failure.empty())
        return "how this AWS SDK would send it couldn't be found out: " + probe.failure;
    return whyNot(probe.path, key);
}

}  // namespace s3vfs
