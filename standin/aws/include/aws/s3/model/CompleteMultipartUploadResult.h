#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>

#include <utility>

namespace Aws::S3::Model {

/// An object made of parts.
class CompleteMultipartUploadResult {
public:
    const Aws::String& GetLocation() const { return location_; }
    void SetLocation(Aws::String location) { location_ = std::move(location); }

    const Aws::String& GetBucket() const { return bucket_; }
    void SetBucket(Aws::String bucket) { bucket_ = std::move(bucket); }

    const Aws::String& GetKey() const { return key_; }
    void SetKey(Aws::String key) { key_ = std::move(key); }

    /// With its quotes, as S3 sent it.
    const Aws::String& GetETag() const { return eTag_; }
    void SetETag(Aws::String eTag) { eTag_ = std::move(eTag); }

    const Aws::String& GetVersionId() const { return versionId_; }
    void SetVersionId(Aws::String versionId) { versionId_ = std::move(versionId); }

private:
    Aws::String location_;
    Aws::String bucket_;
    Aws::String key_;
    Aws::String eTag_;
    Aws::String versionId_;
};

}  // namespace Aws::S3::Model
