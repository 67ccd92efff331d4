#include "operations/S3Error.hpp"

#include <algorithm>
#include <array>

#include "text/Xml.hpp"

namespace s3server {
namespace {

struct Row {
    int status;
    std::string_view code;
    std::string_view message;
};

// The first row of a status is the one usualCode() gives.
constexpr std::array rows{
    Row{301, "PermanentRedirect",
        "The bucket you are attempting to access must be addressed using the specified endpoint. Please send "
        "all future requests to this endpoint."},
    Row{304, "NotModified", "Not Modified"},
    Row{307, "TemporaryRedirect", "Please re-send this request to the specified temporary endpoint."},
    Row{400, "InvalidRequest", "Invalid Request"},
    Row{400, "AuthorizationHeaderMalformed", "The authorization header that you provided is not valid."},
    Row{400, "AuthorizationQueryParametersError", "The authorization query parameters are not valid."},
    Row{400, "BadDigest", "The Content-MD5 you specified did not match what we received."},
    Row{400, "BadRequest", "An error occurred when parsing the HTTP request."},
    Row{400, "EntityTooLarge", "Your proposed upload exceeds the maximum allowed object size."},
    Row{400, "EntityTooSmall", "Your proposed upload is smaller than the minimum allowed size"},
    Row{400, "ExpiredToken", "The provided token has expired."},
    Row{400, "IncompleteBody",
        "You did not provide the number of bytes specified by the Content-Length HTTP header."},
    Row{400, "InvalidArgument", "Invalid Argument"},
    Row{400, "InvalidBucketName", "The specified bucket is not valid."},
    Row{400, "InvalidDigest", "The Content-MD5 you specified was invalid."},
    Row{400, "InvalidLocationConstraint", "The specified location-constraint is not valid"},
    Row{400, "InvalidPart",
        "One or more of the specified parts could not be found.  The part may not have been uploaded, or the "
        "specified entity tag may not match the part's entity tag."},
    Row{400, "InvalidPartOrder",
        "The list of parts was not in ascending order. Parts must be ordered by part number."},
    Row{400, "InvalidToken", "The provided token is malformed or otherwise invalid."},
    Row{400, "InvalidURI", "Couldn't parse the specified URI."},
    Row{400, "KeyTooLongError", "Your key is too long"},
    Row{400, "MalformedXML",
        "The XML you provided was not well-formed or did not validate against our published schema"},
    Row{400, "MalformedTrailerError",
        "The request contained trailing data that was not well-formed or did not conform to our published "
        "schema."},
    Row{400, "MaxMessageLengthExceeded", "Your request was too big."},
    Row{400, "RequestTimeout",
        "Your socket connection to the server was not read from or written to within the timeout period. "
        "Idle "
        "connections will be closed."},
    Row{400, "XAmzContentSHA256Mismatch",
        "The provided 'x-amz-content-sha256' header does not match what was computed."},
    Row{403, "AccessDenied", "Access Denied"},
    Row{403, "InvalidAccessKeyId", "The AWS Access Key Id you provided does not exist in our records."},
    Row{403, "RequestTimeTooSkewed",
        "The difference between the request time and the current time is too large."},
    Row{403, "SignatureDoesNotMatch",
        "The request signature we calculated does not match the signature you provided. Check your key and "
        "signing method."},
    Row{404, "NoSuchKey", "The specified key does not exist."},
    Row{404, "NoSuchBucket", "The specified bucket does not exist"},
    Row{404, "NoSuchUpload",
        "The specified upload does not exist. The upload ID may be invalid, or the upload may have been "
        "aborted or completed."},
    Row{404, "NoSuchBucketPolicy", "The bucket policy does not exist"},
    Row{404, "NoSuchCORSConfiguration", "The CORS configuration does not exist"},
    Row{404, "NoSuchLifecycleConfiguration", "The lifecycle configuration does not exist"},
    Row{404, "NoSuchPublicAccessBlockConfiguration", "The public access block configuration was not found"},
    Row{404, "NoSuchTagSet", "The TagSet does not exist"},
    Row{404, "NoSuchWebsiteConfiguration", "The specified bucket does not have a website configuration"},
    Row{404, "ObjectLockConfigurationNotFoundError",
        "Object Lock configuration does not exist for this bucket"},
    Row{404, "OwnershipControlsNotFoundError", "The bucket ownership controls were not found"},
    Row{404, "ReplicationConfigurationNotFoundError", "The replication configuration was not found"},
    Row{404, "ServerSideEncryptionConfigurationNotFoundError",
        "The server side encryption configuration was not found"},
    Row{405, "MethodNotAllowed", "The specified method is not allowed against this resource."},
    Row{409, "OperationAborted",
        "A conflicting conditional operation is currently in progress against this resource. Please try "
        "again."},
    Row{409, "BucketAlreadyOwnedByYou",
        "Your previous request to create the named bucket succeeded and you already own it."},
    Row{409, "BucketNotEmpty", "The bucket you tried to delete is not empty"},
    Row{411, "MissingContentLength", "You must provide the Content-Length HTTP header."},
    Row{412, "PreconditionFailed", "At least one of the pre-conditions you specified did not hold"},
    Row{416, "InvalidRange", "The requested range is not satisfiable"},
    Row{429, "TooManyRequests", "Please reduce your request rate."},
    Row{500, "InternalError", "We encountered an internal error. Please try again."},
    Row{501, "NotImplemented",
        "A header or query you provided implies functionality that is not implemented."},
    Row{503, "SlowDown", "Please reduce your request rate."},
    Row{503, "ServiceUnavailable", "Service is unable to handle request."},
    Row{507, "InsufficientStorage",
        "The server keeps everything in memory and has no room for this. Deleting objects or "
        "aborting uploads makes room."},
};

}  // namespace

S3Error::S3Error(std::string_view code) : code_(code) {
    const auto* const row = std::find_if(rows.begin(), rows.end(),
                                         [code](const Row& candidate) { return candidate.code == code; });
    if (row == rows.end()) return;
    status_ = row->status;
    message_ = row->message;
}

S3Error&& S3Error::saying(std::string message) && {
    message_ = std::move(message);
    return std::move(*this);
}

S3Error&& S3Error::with(std::string element, std::string text) && {
    elements_.emplace_back(std::move(element), std::move(text));
    return std::move(*this);
}

S3Error&& S3Error::withHeader(std::string name, std::string value) && {
    headers_.emplace_back(std::move(name), std::move(value));
    return std::move(*this);
}

S3Error&& S3Error::withStatus(int status) && {
    status_ = status;
    return std::move(*this);
}

std::string errorDocument(const S3Error& error, const std::string& requestId, const std::string& hostId) {
    XmlWriter xml;
    xml.open("Error").element("Code", error.code()).element("Message", error.message());
    for (const auto& [name, text] : error.elements())
        xml.element(name, text);
    xml.element("RequestId", requestId).element("HostId", hostId).close();
    return xml.document();
}

std::string_view usualCode(int status) {
    const auto* const row = std::find_if(
        rows.begin(), rows.end(), [status](const Row& candidate) { return candidate.status == status; });
    return row == rows.end() ? "InternalError" : row->code;
}

}  // namespace s3server
