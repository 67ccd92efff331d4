#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>

#include <utility>

namespace Aws::S3::Model {

/// A multipart upload that was begun.
class CreateMultipartUploadResult {
public:
    const Aws::String& GetBucket() const { return bucket_; }
    void SetBucket(Aws::String bucket) { bucket_ = std::move(bucket); }

    const Aws::String& GetKey() const { return key_; }
    void SetKey(Aws::String key) { key_ = std::move(key); }

    const Aws::String& GetUploadId() const { return uploadId_; }
    void SetUploadId(Aws::String uploadId) { uploadId_ = std::move(uploadId); }

private:
    Aws::String bucket_;
    Aws::String key_;
    Aws::String uploadId_;
};

}  // namespace Aws::S3::Model
