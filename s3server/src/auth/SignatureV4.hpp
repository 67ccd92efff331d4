#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "http/Request.hpp"

/// AWS Signature Version 4 as the S3 API reference describes it ("Authenticating Requests (AWS Signature
/// Version 4)"). Values in, values out; Authentication decides what to make of them.
namespace s3server {

/// What a signature is valid for.
struct CredentialScope {
    std::string date;
    std::string region;
    std::string service;

    /// "20130524/us-east-1/s3/aws4_request"
    std::string text() const;
};

/// The request as it is signed. The path and the query are encoded anew, so that it doesn't matter which of
/// the characters that need no encoding were encoded on the wire.
std::string canonicalRequest(const Request& request, const std::vector<std::string>& signedHeaders,
                             std::string_view payloadHash);

/// The query parameters in signing order without X-Amz-Signature, encoded.
std::string canonicalQuery(const Request& request);

std::string stringToSign(std::string_view timestamp, const CredentialScope& scope,
                         std::string_view canonicalRequest);

/// The key derived from a secret for one scope, raw bytes.
std::string signingKey(std::string_view secret, const CredentialScope& scope);

/// In hexadecimal digits, lower case.
std::string signatureOf(std::string_view signingKey, std::string_view stringToSign);

/// Carries the signatures of a body that is signed chunk by chunk, each of which covers the one before
/// ("Transferring Payload in Multiple Chunks").
class ChunkSignatures {
public:
    /// `seed` is the signature of the request's head.
    ChunkSignatures(std::string signingKey, std::string timestamp, const CredentialScope& scope,
                    std::string seed);

    /// The signature of the next chunk, given the raw SHA-256 of its bytes.
    std::string nextChunk(std::string_view sha256);
    /// The signature of the trailing headers, given as lines "name:value\n".
    std::string trailer(std::string_view lines);

private:
    std::string key_;
    std::string frame_;
    std::string previous_;
};

}  // namespace s3server
