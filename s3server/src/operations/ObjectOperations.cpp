#include <algorithm>
#include <array>

#include "http/Range.hpp"
#include "operations/Conditions.hpp"
#include "operations/ObjectMetadata.hpp"
#include "operations/Operations.hpp"
#include "operations/S3Error.hpp"
#include "operations/WriteCondition.hpp"
#include "text/Encoding.hpp"
#include "text/Text.hpp"
#include "text/XmlReader.hpp"

namespace s3server {
namespace {

constexpr std::size_t mostDeletions = 1000;

struct Override {
    std::string_view parameter;
    std::string_view header;
};

constexpr std::array overrides{
    Override{"response-content-type", "content-type"},
    Override{"response-content-language", "content-language"},
    Override{"response-expires", "expires"},
    Override{"response-cache-control", "cache-control"},
    Override{"response-content-disposition", "content-disposition"},
    Override{"response-content-encoding", "content-encoding"},
};

void setHeader(Headers& headers, std::string_view name, const std::string& value) {
    for (auto& [existing, text] : headers) {
        if (existing != name) continue;
        text = value;
        return;
    }
    headers.emplace_back(name, value);
}

/// Throws if the parameter would end the header it is to become.
const std::string& headerSafe(const std::string& value) {
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7f; };
    if (std::none_of(value.begin(), value.end(), isControl)) return value;
    throw S3Error("InvalidArgument").saying("Header value cannot be represented using ISO-8859-1.");
}

Headers describe(const Object& object) {
    Headers headers{{"Last-Modified", httpDate(object.lastModified)},
                    {"ETag", quoted(object.etag)},
                    {"Accept-Ranges", "bytes"}};
    headers.insert(headers.end(), object.metadata.begin(), object.metadata.end());
    return headers;
}

std::string contentRange(const Range& range, std::uint64_t size) {
    return "bytes " + std::to_string(range.first) + '-' + std::to_string(range.first + range.length - 1) +
           '/' + std::to_string(size);
}

struct Deletions {
    std::vector<std::string> keys;
    bool quiet = false;
};

Deletions readDeletions(const Bytes& body) {
    const XmlReader document(body, "Delete");
    Deletions deletions;
    deletions.quiet = childText(document.root(), "Quiet") == "true";
    for (const auto* const object : childrenOf(document.root(), "Object")) {
        deletions.keys.push_back(requiredChildText(*object, "Key"));
        if (object->FirstChildElement("VersionId"))
            throw S3Error("NotImplemented").saying("Versions are not implemented");
    }
    if (deletions.keys.empty() || deletions.keys.size() > mostDeletions) throw S3Error("MalformedXML");
    return deletions;
}

/// S3 wants the list of deletions protected against damage on the way.
void requireChecksum(const Request& request) {
    for (const auto& [name, value] : request.headers)
        if (name == "content-md5" || name == "x-amz-trailer" || startsWith(name, "x-amz-checksum-")) return;
    throw S3Error("InvalidRequest").saying("Missing required header for this request: Content-MD5");
}

}  // namespace

Reply getObject(const Call& call) {
    const Request& request = call.request;
    const ObjectPointer object = call.store.object(request.bucket, request.key);
    Headers headers = describe(*object);
    switch (judge(request, *object)) {
        case Verdict::Failed:
            throw preconditionFailed("If-Match");
        case Verdict::NotModified:
            return {304, std::move(headers), {}};
        case Verdict::Go:
            break;
    }
    for (const auto& [parameter, header] : overrides)
        if (const auto* const value = request.parameter(parameter))
            setHeader(headers, header, headerSafe(*value));
    const std::uint64_t size = object->bytes.size();
    const auto range = requestedRange(request.header("range"), size);
    if (!range) return {200, std::move(headers), object->bytes};
    headers.emplace_back("Content-Range", contentRange(*range, size));
    return {206, std::move(headers), object->bytes.piece(range->first, range->length)};
}

// Whatever would give an object tags is refused, so none has any.
Reply getObjectTagging(const Call& call) {
    call.store.object(call.request.bucket, call.request.key);
    XmlWriter xml;
    xml.openRoot("Tagging").element("TagSet", "").close();
    return xmlReply(xml);
}

Reply putObject(const Call& call) {
    const Request& request = call.request;
    refuseUnsupportedHeaders(request);
    Headers metadata = keptHeaders(request);
    const SharedRoom room = call.store.roomFor(request.key, metadata);
    const auto object = std::make_shared<const Object>(
        Object{call.payload.bytes, hex(call.payload.md5), std::move(metadata), call.now, room});
    call.store.put(request.bucket, request.key, object, writeCondition(request));
    return {200, {{"ETag", quoted(object->etag)}}, {}};
}

Reply deleteObject(const Call& call) {
    call.store.remove(call.request.bucket, call.request.key);
    return {204, {}, {}};
}

Reply deleteObjects(const Call& call) {
    requireChecksum(call.request);
    const Deletions deletions = readDeletions(call.payload.bytes);
    XmlWriter xml;
    xml.openRoot("DeleteResult");
    for (const std::string& key : deletions.keys) {
        call.store.remove(call.request.bucket, key);
        if (!deletions.quiet) xml.open("Deleted").element("Key", key).close();
    }
    return xmlReply(xml.close());
}

}  // namespace s3server
