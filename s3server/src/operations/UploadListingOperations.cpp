#include <algorithm>
#include <tuple>

#include "operations/Operations.hpp"
#include "operations/S3Error.hpp"
#include "text/Encoding.hpp"
#include "text/Text.hpp"

namespace s3server {
namespace {

constexpr std::uint64_t largestPage = 1000;

void writePerson(XmlWriter& xml, std::string_view role) {
    xml.open(role).element("ID", "s3server").element("DisplayName", "s3server").close();
}

void writeUpload(XmlWriter& xml, const Upload& upload, bool encoded) {
    xml.open("Upload").element("Key", encoded ? listingEncoded(upload.key) : upload.key);
    xml.element("UploadId", upload.id);
    writePerson(xml, "Initiator");
    writePerson(xml, "Owner");
    xml.element("StorageClass", "STANDARD").element("Initiated", xmlDate(upload.initiated)).close();
}

/// Behind the marker: a later key, or with an id marker, the same key and a later id.
bool isBehind(const Upload& upload, const std::string& key, const std::string& id) {
    if (id.empty()) return upload.key > key;
    return std::tie(upload.key, upload.id) > std::tie(key, id);
}

}  // namespace

Reply listParts(const Call& call) {
    const Request& request = call.request;
    const Upload upload = call.store.upload(request.bucket, request.key, *request.parameter("uploadId"));
    const auto marker = numberParameter(request, "part-number-marker", 0);
    const auto maxParts = std::min(numberParameter(request, "max-parts", largestPage), largestPage);

    auto first = upload.parts.upper_bound(static_cast<unsigned>(marker));
    auto last = first;
    for (std::uint64_t i = 0; i < maxParts && last != upload.parts.end(); ++i)
        ++last;
    const auto nextMarker = first == last ? marker : std::prev(last)->first;

    XmlWriter xml;
    xml.openRoot("ListPartsResult").element("Bucket", request.bucket).element("Key", request.key);
    xml.element("UploadId", upload.id);
    writePerson(xml, "Initiator");
    writePerson(xml, "Owner");
    xml.element("StorageClass", "STANDARD").element("PartNumberMarker", marker);
    xml.element("NextPartNumberMarker", nextMarker).element("MaxParts", maxParts);
    xml.flag("IsTruncated", maxParts != 0 && last != upload.parts.end());
    for (; first != last; ++first) {
        const auto& [number, part] = *first;
        xml.open("Part").element("PartNumber", number);
        xml.element("LastModified", xmlDate(part->lastModified)).element("ETag", quoted(hex(part->md5)));
        xml.element("Size", part->bytes.size()).close();
    }
    return xmlReply(xml.close());
}

Reply listMultipartUploads(const Call& call) {
    const Request& request = call.request;
    if (request.parameter("delimiter")) throw S3Error("NotImplemented").with("QueryParameter", "delimiter");
    const std::string prefix = request.parameterOr("prefix", "");
    const std::string keyMarker = request.parameterOr("key-marker", "");
    const std::string idMarker = request.parameterOr("upload-id-marker", "");
    const auto maxUploads = std::min(numberParameter(request, "max-uploads", largestPage), largestPage);
    const bool encoded = request.parameterOr("encoding-type", "") == "url";

    std::vector<Upload> uploads = call.store.uploads(request.bucket);
    const auto unwanted = [&](const Upload& upload) {
        return !startsWith(upload.key, prefix) || !isBehind(upload, keyMarker, idMarker);
    };
    uploads.erase(std::remove_if(uploads.begin(), uploads.end(), unwanted), uploads.end());
    const bool truncated = maxUploads != 0 && uploads.size() > maxUploads;
    uploads.resize(std::min<std::size_t>(uploads.size(), maxUploads));

    XmlWriter xml;
    xml.openRoot("ListMultipartUploadsResult").element("Bucket", request.bucket);
    xml.element("KeyMarker", encoded ? listingEncoded(keyMarker) : keyMarker);
    xml.element("UploadIdMarker", idMarker);
    if (truncated) {
        const std::string& next = uploads.back().key;
        xml.element("NextKeyMarker", encoded ? listingEncoded(next) : next);
        xml.element("NextUploadIdMarker", uploads.back().id);
    }
    xml.element("Prefix", encoded ? listingEncoded(prefix) : prefix);
    if (encoded) xml.element("EncodingType", "url");
    xml.element("MaxUploads", maxUploads).flag("IsTruncated", truncated);
    for (const Upload& upload : uploads)
        writeUpload(xml, upload, encoded);
    return xmlReply(xml.close());
}

}  // namespace s3server
