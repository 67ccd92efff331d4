#include "core/SignatureV4.hpp"

#include "core/Text.hpp"

namespace standin::aws {
namespace {

constexpr std::string_view algorithm = "AWS4-HMAC-SHA256";

/// Without white space around it, and with runs of blanks made one. A tab stays a tab.
std::string canonicalValue(std::string_view value) {
    std::string out;
    for (const char c : trimmed(value)) {
        if (c != ' ' || out.back() != ' ') out += c;
    }
    return out;
}

Sha256 hmac(const Sha256& key, std::string_view text) {
    return hmacSha256(key.data(), key.size(), text);
}

}  // namespace

std::string CredentialScope::text() const {
    return day + '/' + region + '/' + service + "/aws4_request";
}

std::string signedHeaderNames(const Headers& headers) {
    std::string names;
    for (const auto& header : headers) {
        if (!names.empty()) names += ';';
        names += header.first;
    }
    return names;
}

std::string canonicalRequest(const SignableRequest& request) {
    std::string text;
    text.append(request.method)
        .append("\n")
        .append(request.path)
        .append("\n")
        .append(request.query)
        .append("\n");
    for (const auto& [name, value] : request.headers) {
        text.append(name).append(":").append(canonicalValue(value)).append("\n");
    }
    text.append("\n").append(signedHeaderNames(request.headers)).append("\n").append(request.payloadHash);
    return text;
}

std::string stringToSign(std::string_view timestamp, const CredentialScope& scope,
                         std::string_view canonicalRequest) {
    std::string text(algorithm);
    text.append("\n").append(timestamp).append("\n").append(scope.text()).append("\n");
    return text.append(sha256Hex(canonicalRequest));
}

Sha256 signingKey(std::string_view secretKey, const CredentialScope& scope) {
    const std::string start = std::string("AWS4").append(secretKey);
    const Sha256 dayKey = hmacSha256(start.data(), start.size(), scope.day);
    return hmac(hmac(hmac(dayKey, scope.region), scope.service), "aws4_request");
}

std::string signatureOf(std::string_view stringToSign, const Sha256& signingKey) {
    return toHex(hmac(signingKey, stringToSign));
}

std::string authorizationHeader(std::string_view accessKeyId, const CredentialScope& scope,
                                std::string_view signedHeaderNames, std::string_view signature) {
    std::string text(algorithm);
    text.append(" Credential=").append(accessKeyId).append("/").append(scope.text());
    text.append(", SignedHeaders=").append(signedHeaderNames);
    return text.append(", Signature=").append(signature);
}

}  // namespace standin::aws
