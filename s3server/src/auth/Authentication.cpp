#include "auth/Authentication.hpp"

#include <algorithm>
#include <chrono>

#include "operations/S3Error.hpp"
#include "text/Digest.hpp"
#include "text/Encoding.hpp"
#include "text/Text.hpp"

namespace s3server {
namespace {

using std::chrono::minutes;
using std::chrono::seconds;

constexpr std::string_view algorithm = "AWS4-HMAC-SHA256";
constexpr minutes largestSkew{15};
constexpr std::uint64_t longestExpiry = 604800;  // seconds: seven days
constexpr std::string_view unsignedPayload = "UNSIGNED-PAYLOAD";

/// The parts of a signature, wherever the request carries them.
struct Claim {
    std::string accessKey;
    CredentialScope scope;
    std::vector<std::string> signedHeaders;
    std::string signature;
    std::string timestamp;
    std::string sessionToken;
    std::string payloadHash;
    /// Of a presigned URL.
    std::optional<seconds> expiry;
};

S3Error malformedHeader(std::string message) {
    return S3Error("AuthorizationHeaderMalformed")
        .saying("The authorization header is malformed; " + std::move(message));
}

S3Error malformedQuery(std::string message) {
    return S3Error("AuthorizationQueryParametersError").saying(std::move(message));
}

using Malformed = S3Error (*)(std::string);

void readCredential(Claim& claim, std::string_view text, Malformed malformed) {
    // The access key may have slashes of its own, the four parts behind it may not.
    const auto pieces = split(text, '/');
    if (pieces.size() < 5 || pieces.back() != "aws4_request")
        throw malformed(
            "the Credential is mal-formed; expecting \"<YOUR-AKID>/YYYYMMDD/REGION/SERVICE/aws4_request\".");
    const auto scope = pieces.end() - 4;
    claim.scope = {std::string(scope[0]), std::string(scope[1]), std::string(scope[2])};
    claim.accessKey = text.substr(0, static_cast<std::size_t>(scope[0].data() - text.data() - 1));
    if (claim.scope.service != "s3")
        throw malformed("incorrect service \"" + claim.scope.service +
                        "\". This endpoint belongs to \"s3\".");
}

void readSignedHeaders(Claim& claim, std::string_view text) {
    for (const std::string_view name : split(text, ';'))
        claim.signedHeaders.push_back(lowered(name));
}

Claim claimOfHeader(const Request& request, std::string_view header) {
    if (startsWith(header, "AWS ")) {
        throw S3Error("InvalidRequest")
            .saying(
                "The authorization mechanism you have provided is not supported. Please use "
                "AWS4-HMAC-SHA256.");
    }
    if (!startsWith(header, algorithm)) {
        throw S3Error("InvalidArgument")
            .saying("Unsupported Authorization Type")
            .with("ArgumentName", "Authorization");
    }
    header.remove_prefix(algorithm.size());
    Claim claim;
    for (const std::string_view piece : split(header, ',')) {
        const auto [name, value] = splitAtFirst(trimmed(piece), '=');
        if (name == "Credential") readCredential(claim, value, malformedHeader);
        if (name == "SignedHeaders") readSignedHeaders(claim, value);
        if (name == "Signature") claim.signature = value;
    }
    if (claim.accessKey.empty()) throw malformedHeader("it lacks Credential.");
    if (claim.signedHeaders.empty()) throw malformedHeader("it lacks SignedHeaders.");
    if (claim.signature.empty()) throw malformedHeader("it lacks Signature.");

    claim.timestamp = request.header("x-amz-date");
    claim.sessionToken = request.header("x-amz-security-token");
    claim.payloadHash = request.header("x-amz-content-sha256");
    if (claim.payloadHash.empty()) {
        throw S3Error("InvalidRequest")
            .saying("Missing required header for this request: x-amz-content-sha256");
    }
    return claim;
}

std::string requiredParameter(const Request& request, std::string_view name) {
    if (const std::string* const value = request.parameter(name)) return *value;
    throw malformedQuery(
        "Query-string authentication version 4 requires the X-Amz-Algorithm, X-Amz-Credential, "
        "X-Amz-Signature, X-Amz-Date, X-Amz-SignedHeaders, and X-Amz-Expires parameters.");
}

Claim claimOfQuery(const Request& request) {
    if (requiredParameter(request, "X-Amz-Algorithm") != algorithm)
        throw malformedQuery("X-Amz-Algorithm only supports \"AWS4-HMAC-SHA256\"");
    Claim claim;
    readCredential(claim, requiredParameter(request, "X-Amz-Credential"), malformedQuery);
    readSignedHeaders(claim, requiredParameter(request, "X-Amz-SignedHeaders"));
    claim.signature = requiredParameter(request, "X-Amz-Signature");
    claim.timestamp = requiredParameter(request, "X-Amz-Date");
    claim.sessionToken = request.parameterOr("X-Amz-Security-Token", "");
    const auto payloadHash = request.header("x-amz-content-sha256");
    claim.payloadHash = payloadHash.empty() ? unsignedPayload : payloadHash;
    const auto expiry = parseNumber(requiredParameter(request, "X-Amz-Expires"));
    if (!expiry || *expiry > longestExpiry)
        throw malformedQuery("X-Amz-Expires must be a number of seconds, at most a week (604800)");
    claim.expiry = seconds(*expiry);
    return claim;
}

Claim readClaim(const Request& request) {
    const bool inQuery = request.parameter("X-Amz-Algorithm") != nullptr;
    const std::string* const header = findHeader(request.headers, "authorization");
    if (header && inQuery) {
        throw S3Error("InvalidArgument")
            .saying(
                "Only one auth mechanism allowed; only the X-Amz-Algorithm query parameter, Signature query "
                "string parameter or the Authorization header should be specified");
    }
    if (header) return claimOfHeader(request, *header);
    if (inQuery) return claimOfQuery(request);
    throw S3Error("AccessDenied");
}

const Credentials& credentialsOf(const Claim& claim, const std::vector<Credentials>& known) {
    const auto found = std::find_if(known.begin(), known.end(), [&claim](const Credentials& candidate) {
        return candidate.accessKey == claim.accessKey;
    });
    // A temporary key is unknown to S3 without its token.
    if (found == known.end() || (claim.sessionToken.empty() && !found->sessionToken.empty()))
        throw S3Error("InvalidAccessKeyId").with("AWSAccessKeyId", claim.accessKey);
    if (!equalInConstantTime(claim.sessionToken, found->sessionToken)) throw S3Error("InvalidToken");
    return *found;
}

void checkTime(const Claim& claim, TimePoint now) {
    const auto time = parseSigningDate(claim.timestamp);
    if (!time) {
        throw S3Error("AccessDenied").saying("AWS authentication requires a valid Date or x-amz-date header");
    }
    if (claim.timestamp.substr(0, 8) != claim.scope.date)
        throw malformedHeader("Invalid credential date \"" + claim.scope.date +
                              "\". This date is not the same as X-Amz-Date: \"" +
                              claim.timestamp.substr(0, 8) + "\".");
    if (claim.expiry && now > *time + *claim.expiry) {
        throw S3Error("AccessDenied")
            .saying("Request has expired")
            .with("X-Amz-Expires", std::to_string(claim.expiry->count()))
            .with("Expires", xmlDate(*time + *claim.expiry))
            .with("ServerTime", xmlDate(now));
    }
    const bool late = !claim.expiry && now > *time + largestSkew;
    if (late || *time > now + largestSkew) {
        throw S3Error("RequestTimeTooSkewed")
            .with("RequestTime", claim.timestamp)
            .with("ServerTime", xmlDate(now))
            .with("MaxAllowedSkewMilliseconds",
                  std::to_string(std::chrono::milliseconds(largestSkew).count()));
    }
}

/// The host and everything that S3 acts on must be under the signature.
void checkSignedHeaders(const Request& request, const Claim& claim) {
    std::string missing;
    for (const auto& [name, value] : request.headers) {
        const bool matters = name == "host" || startsWith(name, "x-amz-");
        const auto& names = claim.signedHeaders;
        if (!matters || std::find(names.begin(), names.end(), name) != names.end()) continue;
        if (claim.expiry && name == "x-amz-content-sha256") continue;
        missing += missing.empty() ? name : ", " + name;
    }
    if (missing.empty()) return;
    throw S3Error("AccessDenied")
        .saying("There were headers present in the request which were not signed")
        .with("HeadersNotSigned", missing);
}

std::string spacedHex(std::string_view text) {
    const std::string digits = hex(text);
    std::string spaced;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        if (i != 0) spaced += ' ';
        spaced += digits.substr(i, 2);
    }
    return spaced;
}

S3Error mismatch(const Claim& claim, const std::string& toSign, const std::string& canonical) {
    return S3Error("SignatureDoesNotMatch")
        .with("AWSAccessKeyId", claim.accessKey)
        .with("StringToSign", toSign)
        .with("SignatureProvided", claim.signature)
        .with("StringToSignBytes", spacedHex(toSign))
        .with("CanonicalRequest", canonical)
        .with("CanonicalRequestBytes", spacedHex(canonical));
}

}  // namespace

Signer authenticate(const Request& request, const std::vector<Credentials>& credentials, TimePoint now) {
    const Claim claim = readClaim(request);
    const Credentials& owner = credentialsOf(claim, credentials);
    checkTime(claim, now);
    checkSignedHeaders(request, claim);

    const std::string canonical = canonicalRequest(request, claim.signedHeaders, claim.payloadHash);
    const std::string toSign = stringToSign(claim.timestamp, claim.scope, canonical);
    std::string key = signingKey(owner.secretKey, claim.scope);
    if (!equalInConstantTime(signatureOf(key, toSign), claim.signature))
        throw mismatch(claim, toSign, canonical);
    return {claim.scope.region,
            ChunkSignatures(std::move(key), claim.timestamp, claim.scope, claim.signature)};
}

S3Error wrongRegion(const std::string& signedFor, const std::string& expected) {
    return malformedHeader("the region '" + signedFor + "' is wrong; expecting '" + expected + "'")
        .with("Region", expected)
        .withHeader("x-amz-bucket-region", expected);
}

}  // namespace s3server
