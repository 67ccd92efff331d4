#include "core/Signer.hpp"

#include "core/Text.hpp"

namespace standin::aws {
namespace {

/// Proxies may change a user agent, so it is not signed.
Headers headersToSign(Headers headers) {
    headers.erase("user-agent");
    return headers;
}

}  // namespace

void Signer::sign(Headers& headers, const SigningContext& context,
                  const Aws::Auth::AWSCredentials& credentials) {
    if (credentials.GetAWSAccessKeyId().empty() || credentials.GetAWSSecretKey().empty()) return;
    const std::string timestamp = context.time.ToGmtString(Aws::Utils::DateFormat::ISO_8601_BASIC);
    const CredentialScope scope{timestamp.substr(0, 8), context.region, context.service};
    headers["x-amz-date"] = timestamp;
    headers["x-amz-content-sha256"] = context.payloadHash;
    if (!credentials.GetSessionToken().empty())
        headers["x-amz-security-token"] = trimmed(credentials.GetSessionToken());

    const Headers chosen = headersToSign(headers);
    const std::string canonical =
        canonicalRequest({context.method, context.target.canonicalPath, context.target.canonicalQuery, chosen,
                          context.payloadHash});
    const std::string signature =
        signatureOf(stringToSign(timestamp, scope, canonical), keyFor(credentials.GetAWSSecretKey(), scope));
    headers["authorization"] =
        authorizationHeader(credentials.GetAWSAccessKeyId(), scope, signedHeaderNames(chosen), signature);
}

Sha256 Signer::keyFor(const std::string& secretKey, const CredentialScope& scope) {
    const std::lock_guard lock(mutex_);
    std::string scopeText = scope.text();
    if (secretKey != secretOfKey_ || scopeText != scopeOfKey_) {
        key_ = signingKey(secretKey, scope);
        secretOfKey_ = secretKey;
        scopeOfKey_ = std::move(scopeText);
    }
    return key_;
}

}  // namespace standin::aws
