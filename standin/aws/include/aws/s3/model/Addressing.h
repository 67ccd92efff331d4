#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>
#include <aws/s3/model/Field.h>

#include <utility>

namespace Aws::S3::Model {

/// A request about a bucket.
template <typename Request>
class BucketRequest : public Request {
public:
    const Aws::String& GetBucket() const { return bucket_.get(); }
    bool BucketHasBeenSet() const { return bucket_.isSet(); }
    void SetBucket(Aws::String bucket) { bucket_.set(std::move(bucket)); }

private:
    Field<Aws::String> bucket_;
};

/// A request about an object.
template <typename Request>
class ObjectRequest : public BucketRequest<Request> {
public:
    /// As the object is called, without any encoding.
    const Aws::String& GetKey() const { return key_.get(); }
    bool KeyHasBeenSet() const { return key_.isSet(); }
    void SetKey(Aws::String key) { key_.set(std::move(key)); }

private:
    Field<Aws::String> key_;
};

/// A request about a multipart upload.
template <typename Request>
class UploadRequest : public ObjectRequest<Request> {
public:
    const Aws::String& GetUploadId() const { return uploadId_.get(); }
    bool UploadIdHasBeenSet() const { return uploadId_.isSet(); }
    void SetUploadId(Aws::String uploadId) { uploadId_.set(std::move(uploadId)); }

private:
    Field<Aws::String> uploadId_;
};

/// A request that makes a part of a multipart upload.
template <typename Request>
class PartRequest : public UploadRequest<Request> {
public:
    /// From 1 to 10000.
    int GetPartNumber() const { return partNumber_.get(); }
    bool PartNumberHasBeenSet() const { return partNumber_.isSet(); }
    void SetPartNumber(int partNumber) { partNumber_.set(partNumber); }

private:
    Field<int> partNumber_;
};

}  // namespace Aws::S3::Model
