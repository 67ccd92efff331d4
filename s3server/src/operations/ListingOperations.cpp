#include <algorithm>

#include "operations/Listing.hpp"
#include "operations/Operations.hpp"
#include "operations/S3Error.hpp"
#include "text/Encoding.hpp"
#include "text/Text.hpp"

namespace s3server {
namespace {

constexpr std::uint64_t largestPage = 1000;

/// How keys are written in one answer.
class KeyText {
public:
    explicit KeyText(const Request& request) : encoded_(request.parameter("encoding-type") != nullptr) {
        if (!encoded_ || *request.parameter("encoding-type") == "url") return;
        throw S3Error("InvalidArgument")
            .saying("Invalid Encoding Method specified in Request")
            .with("ArgumentName", "encoding-type");
    }
    std::string operator()(const std::string& key) const { return encoded_ ? listingEncoded(key) : key; }
    bool encoded() const { return encoded_; }

private:
    bool encoded_;
};

ListingQuery commonQuery(const Request& request) {
    ListingQuery query;
    query.prefix = request.parameterOr("prefix", "");
    query.delimiter = request.parameterOr("delimiter", "");
    query.maxKeys = std::min(numberParameter(request, "max-keys", largestPage), largestPage);
    return query;
}

ListingPage readPage(const Call& call, const ListingQuery& query) {
    ListingPage page;
    call.store.readObjects(call.request.bucket,
                           [&](const Objects& objects) { page = listPage(objects, query); });
    return page;
}

void writeOwner(XmlWriter& xml) {
    xml.open("Owner").element("ID", "s3server").element("DisplayName", "s3server").close();
}

void writeFrame(XmlWriter& xml, const ListingQuery& query, const ListingPage& page, const KeyText& text) {
    xml.element("MaxKeys", query.maxKeys);
    if (!query.delimiter.empty()) xml.element("Delimiter", text(query.delimiter));
    if (text.encoded()) xml.element("EncodingType", "url");
    xml.flag("IsTruncated", page.truncated);
}

void writeEntries(XmlWriter& xml, const ListingPage& page, const KeyText& text, bool withOwner) {
    for (const auto& [key, object] : page.contents) {
        xml.open("Contents").element("Key", text(key));
        xml.element("LastModified", xmlDate(object->lastModified)).element("ETag", quoted(object->etag));
        xml.element("Size", object->bytes.size());
        if (withOwner) writeOwner(xml);
        xml.element("StorageClass", "STANDARD").close();
    }
    for (const std::string& prefix : page.commonPrefixes)
        xml.open("CommonPrefixes").element("Prefix", text(prefix)).close();
}

}  // namespace

Reply listObjectsV2(const Call& call) {
    const Request& request = call.request;
    if (*request.parameter("list-type") != "2") {
        throw S3Error("InvalidArgument")
            .saying("Invalid List Type specified in Request")
            .with("ArgumentName", "list-type");
    }
    const KeyText text(request);
    ListingQuery query = commonQuery(request);
    const std::string* const token = request.parameter("continuation-token");
    const std::string* const startAfter = request.parameter("start-after");
    if (token)
        query.after = parseContinuationToken(*token);
    else if (startAfter)
        query.after.text = *startAfter;
    const ListingPage page = readPage(call, query);

    XmlWriter xml;
    xml.openRoot("ListBucketResult").element("Name", request.bucket).element("Prefix", text(query.prefix));
    if (startAfter) xml.element("StartAfter", text(*startAfter));
    if (token) xml.element("ContinuationToken", *token);
    if (page.truncated) xml.element("NextContinuationToken", continuationToken(page.next));
    xml.element("KeyCount", page.size());
    writeFrame(xml, query, page, text);
    writeEntries(xml, page, text, request.parameterOr("fetch-owner", "false") == "true");
    return xmlReply(xml.close());
}

Reply listObjects(const Call& call) {
    const Request& request = call.request;
    const KeyText text(request);
    ListingQuery query = commonQuery(request);
    const std::string marker = request.parameterOr("marker", "");
    // A marker is often the last common prefix of the page before.
    query.after = {marker, !query.delimiter.empty() && endsWith(marker, query.delimiter)};
    const ListingPage page = readPage(call, query);

    XmlWriter xml;
    xml.openRoot("ListBucketResult").element("Name", request.bucket).element("Prefix", text(query.prefix));
    xml.element("Marker", text(marker));
    if (page.truncated && !query.delimiter.empty()) xml.element("NextMarker", text(page.next.text));
    writeFrame(xml, query, page, text);
    writeEntries(xml, page, text, true);
    return xmlReply(xml.close());
}

}  // namespace s3server
