#pragma once

#include <map>
#include <string>
#include <string_view>

#include "core/Digests.hpp"

/// AWS Signature Version 4 in one header, for a payload sent in a single piece. Published in the Amazon S3
/// API Reference, "Authenticating Requests: Using the Authorization Header". Pure functions.
namespace standin::aws {

/// Lower-case names to values.
using Headers = std::map<std::string, std::string>;

/// What a signature is good for.
struct CredentialScope {
    std::string day;  ///< YYYYMMDD, of the signing time
    std::string region;
    std::string service;

    /// "day/region/service/aws4_request"
    std::string text() const;
};

/// A request's parts as the signature covers them.
struct SignableRequest {
    std::string_view method;
    std::string_view path;   ///< encoded
    std::string_view query;  ///< encoded and sorted, "=" after every name
    const Headers& headers;  ///< those to be signed, "host" among them
    std::string_view payloadHash;
};

/// The names, joined by ";".
std::string signedHeaderNames(const Headers& headers);

std::string canonicalRequest(const SignableRequest& request);

/// `timestamp` is YYYYMMDDTHHMMSSZ.
std::string stringToSign(std::string_view timestamp, const CredentialScope& scope,
                         std::string_view canonicalRequest);

Sha256 signingKey(std::string_view secretKey, const CredentialScope& scope);

/// In hexadecimal.
std::string signatureOf(std::string_view stringToSign, const Sha256& signingKey);

/// The value of the authorization header.
std::string authorizationHeader(std::string_view accessKeyId, const CredentialScope& scope,
                                std::string_view signedHeaderNames, std::string_view signature);

}  // namespace standin::aws
