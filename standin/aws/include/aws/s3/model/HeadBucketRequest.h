#pragma once

#include <aws/s3/S3Request.h>
#include <aws/s3/model/Addressing.h>

namespace Aws::S3::Model {

/// Asks whether a bucket is there, and for its region.
class HeadBucketRequest : public BucketRequest<S3Request> {
public:
    const char* GetServiceRequestName() const override { return "HeadBucket"; }
};

}  // namespace Aws::S3::Model
