#include "auth/SignatureV4.hpp"

#include <algorithm>
#include <utility>

#include "text/Digest.hpp"
#include "text/Encoding.hpp"
#include "text/Text.hpp"

namespace s3server {
namespace {

/// Without blanks at its ends, and with single ones inside.
std::string canonicalValue(std::string_view value) {
    std::string result;
    for (const std::string_view word : split(trimmed(value), ' ')) {
        if (word.empty()) continue;
        if (!result.empty()) result += ' ';
        result += word;
    }
    return result;
}

std::string canonicalHeader(const Request& request, const std::string& name) {
    std::string line = name + ':';
    bool first = true;
    for (const auto& [header, value] : request.headers) {
        if (header != name) continue;
        if (!std::exchange(first, false)) line += ',';
        line += canonicalValue(value);
    }
    return line + '\n';
}

std::string joined(const std::vector<std::string>& words, char separator) {
    std::string text;
    for (const std::string& word : words) {
        if (!text.empty()) text += separator;
        text += word;
    }
    return text;
}

std::string hexSha256(std::string_view text) {
    return hex(digestOf(Digest::sha256(), text));
}

}  // namespace

std::string CredentialScope::text() const {
    std::string text = date;
    for (const std::string& part : {region, service})
        text.append("/").append(part);
    return text.append("/aws4_request");
}

std::string canonicalQuery(const Request& request) {
    std::vector<std::pair<std::string, std::string>> parameters;
    for (const auto& [name, value] : request.query)
        if (name != "X-Amz-Signature") parameters.emplace_back(percentEncoded(name), percentEncoded(value));
    std::sort(parameters.begin(), parameters.end());
    std::string text;
    for (const auto& [name, value] : parameters) {
        if (!text.empty()) text += '&';
        text.append(name).append("=").append(value);
    }
    return text;
}

std::string canonicalRequest(const Request& request, const std::vector<std::string>& signedHeaders,
                             std::string_view payloadHash) {
    std::string text = request.method + '\n';
    text += percentEncoded(percentDecoded(request.path).value_or(request.path), "/") + '\n';
    text += canonicalQuery(request) + '\n';
    for (const std::string& name : signedHeaders)
        text += canonicalHeader(request, name);
    return text.append("\n").append(joined(signedHeaders, ';')).append("\n").append(payloadHash);
}

std::string stringToSign(std::string_view timestamp, const CredentialScope& scope,
                         std::string_view canonicalRequest) {
    std::string text = "AWS4-HMAC-SHA256\n";
    text.append(timestamp).append("\n").append(scope.text()).append("\n");
    return text.append(hexSha256(canonicalRequest));
}

std::string signingKey(std::string_view secret, const CredentialScope& scope) {
    std::string key = hmacSha256(std::string("AWS4").append(secret), scope.date);
    for (const std::string_view step :
         {std::string_view(scope.region), std::string_view(scope.service), std::string_view("aws4_request")})
        key = hmacSha256(key, step);
    return key;
}

std::string signatureOf(std::string_view signingKey, std::string_view stringToSign) {
    return hex(hmacSha256(signingKey, stringToSign));
}

ChunkSignatures::ChunkSignatures(std::string signingKey, std::string timestamp, const CredentialScope& scope,
                                 std::string seed)
    : key_(std::move(signingKey)),
      frame_(std::move(timestamp) + '\n' + scope.text() + '\n'),
      previous_(std::move(seed)) {}

std::string ChunkSignatures::nextChunk(std::string_view sha256) {
    previous_ = signatureOf(
        key_, "AWS4-HMAC-SHA256-PAYLOAD\n" + frame_ + previous_ + '\n' + hexSha256("") + '\n' + hex(sha256));
    return previous_;
}

std::string ChunkSignatures::trailer(std::string_view lines) {
    previous_ =
        signatureOf(key_, "AWS4-HMAC-SHA256-TRAILER\n" + frame_ + previous_ + '\n' + hexSha256(lines));
    return previous_;
}

}  // namespace s3server
