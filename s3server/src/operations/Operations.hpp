#pragma once

#include "auth/Payload.hpp"
#include "http/Request.hpp"
#include "store/Bytes.hpp"
#include "store/Store.hpp"
#include "text/Dates.hpp"
#include "text/Xml.hpp"

/// The operations of the S3 API ("Amazon S3 API Reference"), a function each. They run on any thread, and
/// throw S3Error for every answer that isn't a success.
namespace s3server {

struct Reply {
    int status = 200;
    Headers headers;
    Bytes body;
};

/// All that an operation works on.
struct Call {
    const Request& request;
    const Payload& payload;
    Store& store;
    TimePoint now;
};

using Operation = Reply (*)(const Call&);

Reply listBuckets(const Call& call);
Reply createBucket(const Call& call);
Reply deleteBucket(const Call& call);
Reply headBucket(const Call& call);
Reply getBucketLocation(const Call& call);

/// Whatever would configure a bucket is refused, so no bucket has a configuration. Only for the subresources
/// that the routes name with it.
Reply getBucketConfiguration(const Call& call);
Reply getBucketRequestPayment(const Call& call);
/// Likewise of access control lists, a bucket's and an object's: all is its owner's.
Reply getBucketAcl(const Call& call);
Reply getObjectAcl(const Call& call);

Reply listObjects(const Call& call);
Reply listObjectsV2(const Call& call);

/// For GetObject and HeadObject alike: whoever sends the reply to a HEAD request leaves the body out.
Reply getObject(const Call& call);
Reply getObjectTagging(const Call& call);
Reply putObject(const Call& call);
Reply deleteObject(const Call& call);
Reply deleteObjects(const Call& call);
Reply copyObject(const Call& call);

Reply createMultipartUpload(const Call& call);
Reply uploadPart(const Call& call);
Reply uploadPartCopy(const Call& call);
Reply completeMultipartUpload(const Call& call);
Reply abortMultipartUpload(const Call& call);
Reply listParts(const Call& call);
Reply listMultipartUploads(const Call& call);

/// "General purpose bucket naming rules" in the S3 user guide.
bool isBucketName(std::string_view name);
/// What may be a LocationConstraint, the empty one included.
bool isRegion(std::string_view name);

Reply xmlReply(const XmlWriter& xml);
/// A number in the query, or `otherwise` if it isn't there. Throws S3Error InvalidArgument.
std::uint64_t numberParameter(const Request& request, const std::string& name, std::uint64_t otherwise);
std::string quoted(const std::string& etag);

}  // namespace s3server
