#include "operations/Conditions.hpp"
#include "operations/CopySource.hpp"
#include "operations/ObjectMetadata.hpp"
#include "operations/S3Error.hpp"
#include "operations/WriteCondition.hpp"
#include "text/Digest.hpp"
#include "text/Encoding.hpp"
#include "text/Text.hpp"

namespace s3server {
namespace {

constexpr std::uint64_t largestCopy = std::uint64_t{5} << 30U;
constexpr std::string_view conditionPrefix = "x-amz-copy-source-";

S3Error invalidSource() {
    return S3Error("InvalidArgument")
        .saying("Copy Source must mention the source bucket and key: sourcebucket/sourcekey")
        .with("ArgumentName", "x-amz-copy-source");
}

/// The tag a copy gets: that of a single upload, also if the source was uploaded in parts.
std::string etagOfCopy(const Object& source) {
    const bool inParts = source.etag.find('-') != std::string::npos;
    return inParts ? hex(digestOf(Digest::md5(), source.bytes)) : source.etag;
}

bool replacesMetadata(const Request& request) {
    const auto directive = request.header("x-amz-metadata-directive");
    if (directive.empty() || directive == "COPY") return false;
    if (directive == "REPLACE") return true;
    throw S3Error("InvalidArgument")
        .saying("Unknown metadata directive.")
        .with("ArgumentName", "x-amz-metadata-directive")
        .with("ArgumentValue", std::string(directive));
}

}  // namespace

CopySource findCopySource(const Call& call) {
    const auto [path, query] = splitAtFirst(call.request.header("x-amz-copy-source"), '?');
    if (!query.empty()) throw S3Error("NotImplemented").saying("Versions are not implemented");
    const auto decoded = percentDecoded(startsWith(path, "/") ? path.substr(1) : path);
    if (!decoded) throw invalidSource();
    const auto [bucket, key] = splitAtFirst(*decoded, '/');
    if (bucket.empty() || key.empty()) throw invalidSource();
    CopySource source{std::string(bucket), std::string(key), nullptr};
    source.object = call.store.object(source.bucket, source.key);
    if (judge(call.request, *source.object, conditionPrefix) != Verdict::Go)
        throw preconditionFailed("x-amz-copy-source-If-Match");
    return source;
}

void requireCopyableSize(std::uint64_t size) {
    if (size <= largestCopy) return;
    throw S3Error("InvalidRequest")
        .saying("The specified copy source is larger than the maximum allowable size for a copy source: " +
                std::to_string(largestCopy));
}

Reply copyReply(std::string_view root, const std::string& etag, TimePoint lastModified) {
    XmlWriter xml;
    xml.openRoot(root).element("LastModified", xmlDate(lastModified)).element("ETag", quoted(etag)).close();
    return xmlReply(xml);
}

Reply copyObject(const Call& call) {
    const Request& request = call.request;
    refuseUnsupportedHeaders(request);
    const CopySource source = findCopySource(call);
    requireCopyableSize(source.object->bytes.size());
    const bool replace = replacesMetadata(request);
    if (!replace && source.bucket == request.bucket && source.key == request.key) {
        throw S3Error("InvalidRequest")
            .saying(
                "This copy request is illegal because it is trying to copy an object to itself without "
                "changing the object's metadata, storage class, website redirect location or encryption "
                "attributes.");
    }
    Headers metadata = replace ? keptHeaders(request) : source.object->metadata;
    const SharedRoom room = call.store.roomFor(request.key, metadata);
    const auto copy = std::make_shared<const Object>(
        Object{source.object->bytes, etagOfCopy(*source.object), std::move(metadata), call.now, room});
    call.store.put(request.bucket, request.key, copy, writeCondition(request));
    return copyReply("CopyObjectResult", copy->etag, copy->lastModified);
}

}  // namespace s3server
