#pragma once

#include <optional>
#include <string>
#include <vector>

#include "auth/SignatureV4.hpp"
#include "http/Request.hpp"
#include "s3server/Options.hpp"
#include "text/Dates.hpp"

namespace s3server {

/// A request whose signature holds.
struct Signer {
    std::string region;
    /// For the chunks of the body, where it is signed chunk by chunk.
    ChunkSignatures chunks;
};

/// Finds out who signed a request, in its Authorization header or in the query of a presigned URL. Throws
/// the S3Error that S3 answers to a request whose signature is missing, malformed, late or wrong. The body
/// isn't looked at: what the request says of its hash is what is signed.
Signer authenticate(const Request& request, const std::vector<Credentials>& credentials, TimePoint now);

/// What S3 answers to a request signed for another region than the bucket's.
class S3Error wrongRegion(const std::string& signedFor, const std::string& expected);

}  // namespace s3server
