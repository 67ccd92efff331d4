#include <algorithm>

#include "http/Range.hpp"
#include "operations/CopySource.hpp"
#include "operations/ObjectMetadata.hpp"
#include "operations/Operations.hpp"
#include "operations/S3Error.hpp"
#include "operations/WriteCondition.hpp"
#include "text/Digest.hpp"
#include "text/Encoding.hpp"
#include "text/Random.hpp"
#include "text/Text.hpp"
#include "text/XmlReader.hpp"

namespace s3server {
namespace {

constexpr std::uint64_t smallestPart = std::uint64_t{5} << 20U;
constexpr unsigned mostParts = 10000;

/// Opaque, in the characters that S3 makes its upload ids of.
std::string newUploadId() {
    std::string id = base64(randomBytes(48));
    std::replace(id.begin(), id.end(), '+', '.');
    std::replace(id.begin(), id.end(), '/', '_');
    return id;
}

unsigned partNumber(const Request& request) {
    const std::string& text = *request.parameter("partNumber");
    const auto number = parseNumber(text);
    if (number && *number >= 1 && *number <= mostParts) return static_cast<unsigned>(*number);
    throw S3Error("InvalidArgument")
        .saying("Part number must be an integer between 1 and 10000, inclusive")
        .with("ArgumentName", "partNumber")
        .with("ArgumentValue", text);
}

const std::string& uploadId(const Request& request) {
    return *request.parameter("uploadId");
}

struct ListedPart {
    unsigned number;
    std::string etag;
};

std::string unquoted(const std::string& etag) {
    const bool hasQuotes = etag.size() >= 2 && etag.front() == '"' && etag.back() == '"';
    return hasQuotes ? etag.substr(1, etag.size() - 2) : etag;
}

std::vector<ListedPart> readPartList(const Bytes& body) {
    const XmlReader document(body, "CompleteMultipartUpload");
    std::vector<ListedPart> parts;
    for (const auto* const part : childrenOf(document.root(), "Part")) {
        const auto number = parseNumber(requiredChildText(*part, "PartNumber"));
        if (!number || *number > mostParts) throw S3Error("MalformedXML");
        parts.push_back({static_cast<unsigned>(*number), unquoted(requiredChildText(*part, "ETag"))});
    }
    if (parts.empty()) throw S3Error("MalformedXML");
    return parts;
}

void requireAscending(const std::vector<ListedPart>& parts, const std::string& id) {
    const auto notBelow = [](const ListedPart& left, const ListedPart& right) {
        return left.number >= right.number;
    };
    if (std::adjacent_find(parts.begin(), parts.end(), notBelow) != parts.end())
        throw S3Error("InvalidPartOrder").with("UploadId", id);
}

const Part& storedPart(const Upload& upload, const ListedPart& listed) {
    const auto found = upload.parts.find(listed.number);
    if (found != upload.parts.end() && hex(found->second->md5) == listed.etag) return *found->second;
    throw S3Error("InvalidPart")
        .with("UploadId", upload.id)
        .with("PartNumber", std::to_string(listed.number))
        .with("ETag", listed.etag);
}

void requireLargeEnough(const Part& part, const ListedPart& listed) {
    if (part.bytes.size() >= smallestPart) return;
    throw S3Error("EntityTooSmall")
        .with("ProposedSize", std::to_string(part.bytes.size()))
        .with("MinSizeAllowed", std::to_string(smallestPart))
        .with("PartNumber", std::to_string(listed.number))
        .with("ETag", listed.etag);
}

/// The object that the parts listed make. Its bytes are the parts' own, and its room is the upload's:
/// completing needs no more.
Object assembled(const Upload& upload, const std::vector<ListedPart>& list, TimePoint now) {
    requireAscending(list, upload.id);
    Object object{{}, {}, upload.metadata, now, upload.room};
    std::string digests;
    for (const ListedPart& listed : list) {
        const Part& part = storedPart(upload, listed);
        object.bytes.append(part.bytes);
        digests += part.md5;
    }
    for (auto listed = list.begin(); listed + 1 != list.end(); ++listed)
        requireLargeEnough(storedPart(upload, *listed), *listed);
    object.etag = hex(digestOf(Digest::md5(), digests)) + '-' + std::to_string(list.size());
    return object;
}

}  // namespace

Reply createMultipartUpload(const Call& call) {
    const Request& request = call.request;
    refuseUnsupportedHeaders(request);
    const std::string id = newUploadId();
    Headers metadata = keptHeaders(request);
    const SharedRoom room = call.store.roomFor(request.key, metadata);
    call.store.open(request.bucket, {request.key, id, std::move(metadata), call.now, {}, room});
    XmlWriter xml;
    xml.openRoot("InitiateMultipartUploadResult").element("Bucket", request.bucket);
    xml.element("Key", request.key).element("UploadId", id).close();
    return xmlReply(xml);
}

Reply uploadPart(const Call& call) {
    const Request& request = call.request;
    refuseUnsupportedHeaders(request);
    const auto part = std::make_shared<const Part>(
        Part{call.payload.bytes, call.payload.md5, call.now, call.store.roomFor({}, {})});
    call.store.putPart(request.bucket, request.key, uploadId(request), partNumber(request), part);
    return {200, {{"ETag", quoted(hex(part->md5))}}, {}};
}

Reply uploadPartCopy(const Call& call) {
    const Request& request = call.request;
    refuseUnsupportedHeaders(request);
    const unsigned number = partNumber(request);
    const CopySource source = findCopySource(call);
    Bytes bytes = source.object->bytes;
    if (request.hasHeader("x-amz-copy-source-range")) {
        const Range range = copiedRange(request.header("x-amz-copy-source-range"), bytes.size());
        bytes = bytes.piece(range.first, range.length);
    }
    requireCopyableSize(bytes.size());
    std::string md5 = digestOf(Digest::md5(), bytes);
    const auto part = std::make_shared<const Part>(
        Part{std::move(bytes), std::move(md5), call.now, call.store.roomFor({}, {})});
    call.store.putPart(request.bucket, request.key, uploadId(request), number, part);
    return copyReply("CopyPartResult", hex(part->md5), part->lastModified);
}

Reply completeMultipartUpload(const Call& call) {
    const Request& request = call.request;
    const std::string& id = uploadId(request);
    const Upload upload = call.store.upload(request.bucket, request.key, id);
    const auto object =
        std::make_shared<const Object>(assembled(upload, readPartList(call.payload.bytes), call.now));
    call.store.complete(request.bucket, request.key, id, object, writeCondition(request));
    XmlWriter xml;
    xml.openRoot("CompleteMultipartUploadResult");
    xml.element("Location", "http://" + std::string(request.header("host")) + request.path);
    xml.element("Bucket", request.bucket).element("Key", request.key).element("ETag", quoted(object->etag));
    return xmlReply(xml.close());
}

Reply abortMultipartUpload(const Call& call) {
    call.store.abort(call.request.bucket, call.request.key, uploadId(call.request));
    return {204, {}, {}};
}

}  // namespace s3server
