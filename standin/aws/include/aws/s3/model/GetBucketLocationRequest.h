#pragma once

#include <aws/s3/S3Request.h>
#include <aws/s3/model/Addressing.h>

namespace Aws::S3::Model {

/// Asks for the region a bucket was made in.
class GetBucketLocationRequest : public BucketRequest<S3Request> {
public:
    const char* GetServiceRequestName() const override { return "GetBucketLocation"; }
};

}  // namespace Aws::S3::Model
