#include <algorithm>
#include <array>

#include "operations/Operations.hpp"
#include "operations/S3Error.hpp"
#include "text/Text.hpp"
#include "text/XmlReader.hpp"

namespace s3server {
namespace {

bool isLabelEnd(char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

bool hasBucketCharacters(std::string_view name) {
    const auto allowed = [](char c) { return isLabelEnd(c) || c == '-' || c == '.'; };
    return name.size() >= 3 && name.size() <= 63 && std::all_of(name.begin(), name.end(), allowed) &&
           isLabelEnd(name.front()) && isLabelEnd(name.back()) && name.find("..") == std::string_view::npos;
}

/// Of the form of an IPv4 address, whatever the numbers.
bool isAddress(std::string_view name) {
    const auto labels = split(name, '.');
    const auto isDigits = [](std::string_view label) {
        return label.find_first_not_of("0123456789") == std::string_view::npos;
    };
    return labels.size() == 4 && std::all_of(labels.begin(), labels.end(), isDigits);
}

// What S3 keeps for names that are no bucket's of the general kind: aliases, access points, other buckets.
constexpr std::array<std::string_view, 3> reservedStarts{"xn--", "sthree-", "amzn-s3-demo-"};
constexpr std::array<std::string_view, 5> reservedEnds{"-s3alias", "--ol-s3", ".mrap", "--x-s3",
                                                       "--table-s3"};

bool isReserved(std::string_view name) {
    return std::any_of(reservedStarts.begin(), reservedStarts.end(),
                       [name](std::string_view start) { return startsWith(name, start); }) ||
           std::any_of(reservedEnds.begin(), reservedEnds.end(),
                       [name](std::string_view end) { return endsWith(name, end); });
}

}  // namespace

bool isBucketName(std::string_view name) {
    return hasBucketCharacters(name) && !isAddress(name) && !isReserved(name);
}

bool isRegion(std::string_view name) {
    const auto allowed = [](char c) { return isLabelEnd(c) || c == '-'; };
    return name == "EU" || std::all_of(name.begin(), name.end(), allowed);
}

Reply listBuckets(const Call& call) {
    XmlWriter xml;
    xml.openRoot("ListAllMyBucketsResult");
    xml.open("Owner").element("ID", "s3server").element("DisplayName", "s3server").close();
    xml.open("Buckets");
    for (const BucketInfo& bucket : call.store.buckets()) {
        xml.open("Bucket").element("Name", bucket.name);
        xml.element("CreationDate", xmlDate(bucket.created)).element("BucketRegion", bucket.region()).close();
    }
    return xmlReply(xml.close().close());
}

Reply createBucket(const Call& call) {
    const std::string& name = call.request.bucket;
    if (!isBucketName(name)) throw S3Error("InvalidBucketName").with("BucketName", name);
    std::string location;
    if (call.payload.bytes.size() != 0) {
        const XmlReader document(call.payload.bytes, "CreateBucketConfiguration");
        location = childText(document.root(), "LocationConstraint");
    }
    if (!isRegion(location)) throw S3Error("InvalidLocationConstraint").with("LocationConstraint", location);
    if (location == "us-east-1") location.clear();
    call.store.createBucket({name, location, call.now});
    return {200, {{"Location", "/" + name}}, {}};
}

Reply deleteBucket(const Call& call) {
    call.store.deleteBucket(call.request.bucket);
    return {204, {}, {}};
}

Reply headBucket(const Call& call) {
    const BucketInfo info = call.store.bucket(call.request.bucket);
    return {200, {{"Content-Type", "application/xml"}, {"x-amz-bucket-region", info.region()}}, {}};
}

Reply getBucketLocation(const Call& call) {
    XmlWriter xml;
    xml.rootWithText("LocationConstraint", call.store.bucket(call.request.bucket).location);
    return xmlReply(xml);
}

}  // namespace s3server
