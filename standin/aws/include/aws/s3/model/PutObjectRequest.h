#pragma once

#include <aws/s3/S3Request.h>
#include <aws/s3/model/Addressing.h>
#include <aws/s3/model/Field.h>

namespace Aws::S3::Model {

/// Writes an object.
class PutObjectRequest : public ObjectRequest<StreamingS3Request> {
public:
    const char* GetServiceRequestName() const override { return "PutObject"; }

    /// Bytes to send of the body; all of it when not set.
    long long GetContentLength() const { return contentLength_.get(); }
    bool ContentLengthHasBeenSet() const { return contentLength_.isSet(); }
    void SetContentLength(long long contentLength) { contentLength_.set(contentLength); }

private:
    Field<long long> contentLength_;
};

}  // namespace Aws::S3::Model
