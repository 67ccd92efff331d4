#include "replay/Outcomes.hpp"

#include "replay/Digest.hpp"

#include <aws/s3/S3Errors.h>
#include <aws/s3/model/AbortMultipartUploadResult.h>
#include <aws/s3/model/CompleteMultipartUploadResult.h>
#include <aws/s3/model/CreateMultipartUploadResult.h>
#include <aws/s3/model/DeleteObjectResult.h>
#include <aws/s3/model/GetBucketLocationResult.h>
#include <aws/s3/model/GetObjectResult.h>
#include <aws/s3/model/HeadBucketResult.h>
#include <aws/s3/model/HeadObjectResult.h>
#include <aws/s3/model/ListObjectsV2Result.h>
#include <aws/s3/model/PutObjectResult.h>
#include <aws/s3/model/UploadPartCopyResult.h>
#include <aws/s3/model/UploadPartResult.h>

#include <sstream>

namespace replay {
namespace {

constexpr std::size_t longestListing = 2;

bool isUtf8(const std::string& text) {
    try {
        return !Json(text).dump().empty();
    } catch (const Json::type_error&) {
        return false;
    }
}

void add(Json& object, const std::string& name, const std::string& text) {
    if (isUtf8(text))
        object[name] = text;
    else
        object[name + "_hex"] = toHex(text);
}

Json texts(const Aws::Map<Aws::String, Aws::String>& map) {
    Json object = Json::object();
    for (const auto& [name, value] : map)
        add(object, name, value);
    return object;
}

Json date(const Aws::Utils::DateTime& time) {
    return {{"ms", time.Millis()}, {"parsed", time.WasParseSuccessful()}};
}

Json listed(const Aws::S3::Model::Object& object) {
    Json entry{{"size", object.GetSize()}, {"last_modified", date(object.GetLastModified())}};
    add(entry, "key", object.GetKey());
    add(entry, "etag", object.GetETag());
    return entry;
}

// A long listing is recorded by its first two entries, its last one and their number.
void addContents(Json& described, const Aws::Vector<Aws::S3::Model::Object>& contents) {
    described["contents"] = Json::array();
    const bool shortened = contents.size() > 100;
    for (const auto& object : contents) {
        if (shortened && described["contents"].size() == longestListing) break;
        described["contents"].push_back(listed(object));
    }
    if (!shortened) return;
    described["contents_count"] = contents.size();
    described["contents_last"] = listed(contents.back());
}

}  // namespace

Json describe(const Aws::S3::S3Error& error) {
    std::ostringstream printed;
    printed << error;
    Json described{{"type", static_cast<int>(error.GetErrorType())},
                   {"http_code", static_cast<int>(error.GetResponseCode())},
                   {"should_retry", error.ShouldRetry()},
                   {"should_throttle", error.ShouldThrottle()},
                   {"response_headers", texts(error.GetResponseHeaders())}};
    add(described, "exception_name", error.GetExceptionName());
    add(described, "message", error.GetMessage());
    add(described, "request_id", error.GetRequestId());
    add(described, "remote_ip", error.GetRemoteHostIpAddress());
    add(described, "text", printed.str());
    return described;
}

Json describe(const Aws::S3::Model::HeadBucketResult& result) {
    Json described;
    add(described, "bucket_region", result.GetBucketRegion());
    return described;
}

Json describe(const Aws::S3::Model::GetBucketLocationResult& result) {
    using namespace Aws::S3::Model;
    const BucketLocationConstraint location = result.GetLocationConstraint();
    Json described{{"is_not_set", location == BucketLocationConstraint::NOT_SET}};
    add(described, "location_constraint_name",
        BucketLocationConstraintMapper::GetNameForBucketLocationConstraint(location));
    return described;
}

Json describe(const Aws::S3::Model::ListObjectsV2Result& result) {
    Json described{{"is_truncated", result.GetIsTruncated()},
                   {"key_count", result.GetKeyCount()},
                   {"max_keys", result.GetMaxKeys()},
                   {"common_prefixes", Json::array()}};
    addContents(described, result.GetContents());
    for (const auto& prefix : result.GetCommonPrefixes())
        described["common_prefixes"].push_back({{"prefix", prefix.GetPrefix()}});
    add(described, "next_continuation_token", result.GetNextContinuationToken());
    add(described, "name", result.GetName());
    add(described, "prefix", result.GetPrefix());
    add(described, "delimiter", result.GetDelimiter());
    return described;
}

Json describe(const Aws::S3::Model::HeadObjectResult& result) {
    Json described{{"content_length", result.GetContentLength()},
                   {"last_modified", date(result.GetLastModified())},
                   {"metadata", texts(result.GetMetadata())}};
    add(described, "etag", result.GetETag());
    add(described, "content_type", result.GetContentType());
    return described;
}

Json describe(const Aws::S3::Model::GetObjectResult& result) {
    std::ostream::pos_type position = result.GetBody().tellg();
    std::ostringstream copy;
    copy << result.GetBody().rdbuf();
    Json described{{"content_length", result.GetContentLength()},
                   {"last_modified", date(result.GetLastModified())},
                   {"metadata", texts(result.GetMetadata())},
                   {"body_tellg", static_cast<std::streamoff>(position)},
                   {"body_len", copy.str().size()},
                   {"body_sha256", sha256Hex(copy.str())},
                   {"copy_left_out_fail", copy.fail()}};
    add(described, "body", copy.str());
    add(described, "etag", result.GetETag());
    add(described, "content_range", result.GetContentRange());
    add(described, "content_encoding", result.GetContentEncoding());
    return described;
}

Json describe(const Aws::S3::Model::PutObjectResult& result) {
    Json described;
    add(described, "etag", result.GetETag());
    add(described, "version_id", result.GetVersionId());
    return described;
}

Json describe(const Aws::S3::Model::DeleteObjectResult& result) {
    Json described{{"delete_marker", result.GetDeleteMarker()}};
    add(described, "version_id", result.GetVersionId());
    return described;
}

Json describe(const Aws::S3::Model::CreateMultipartUploadResult& result) {
    Json described;
    add(described, "bucket", result.GetBucket());
    add(described, "key", result.GetKey());
    add(described, "upload_id", result.GetUploadId());
    return described;
}

Json describe(const Aws::S3::Model::UploadPartResult& result) {
    Json described;
    add(described, "etag", result.GetETag());
    return described;
}

Json describe(const Aws::S3::Model::UploadPartCopyResult& result) {
    Json described{{"last_modified", date(result.GetCopyPartResult().GetLastModified())}};
    add(described, "etag", result.GetCopyPartResult().GetETag());
    return described;
}

Json describe(const Aws::S3::Model::CompleteMultipartUploadResult& result) {
    Json described;
    add(described, "bucket", result.GetBucket());
    add(described, "key", result.GetKey());
    add(described, "etag", result.GetETag());
    add(described, "location", result.GetLocation());
    return described;
}

Json describe(const Aws::S3::Model::AbortMultipartUploadResult&) {
    return Json::object();
}

}  // namespace replay
