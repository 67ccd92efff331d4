#pragma once

#include <aws/s3/S3Request.h>
#include <aws/s3/model/Addressing.h>

namespace Aws::S3::Model {

/// Asks what an object is, without its bytes.
class HeadObjectRequest : public ObjectRequest<S3Request> {
public:
    const char* GetServiceRequestName() const override { return "HeadObject"; }
};

}  // namespace Aws::S3::Model
