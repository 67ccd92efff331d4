#pragma once

#include <aws/core/auth/AWSCredentials.h>
#include <aws/core/utils/DateTime.h>

#include <mutex>
#include <string>

#include "core/RequestTarget.hpp"
#include "core/SignatureV4.hpp"

namespace standin::aws {

/// What of a request to sign the caller knows besides its headers.
struct SigningContext {
    std::string method;
    const RequestTarget& target;
    std::string region;
    std::string service;
    std::string payloadHash;  ///< SHA-256 in hexadecimal, or "UNSIGNED-PAYLOAD"
    Aws::Utils::DateTime time;
};

/// Signs requests, remembering the signing key of the last day, region and secret. Thread-safe.
class Signer {
public:
    /// Adds the date, the payload's hash, the session token if there is one, and the authorization. `headers`
    /// hold the host. Without access key or secret the request is left unsigned: as it is.
    void sign(Headers& headers, const SigningContext& context, const Aws::Auth::AWSCredentials& credentials);

private:
    Sha256 keyFor(const std::string& secretKey, const CredentialScope& scope);

    std::mutex mutex_;
    std::string secretOfKey_;
    std::string scopeOfKey_;
    Sha256 key_{};
};

}  // namespace standin::aws
