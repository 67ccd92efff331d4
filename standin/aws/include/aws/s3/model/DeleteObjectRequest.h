#pragma once

#include <aws/s3/S3Request.h>
#include <aws/s3/model/Addressing.h>

namespace Aws::S3::Model {

/// Removes an object.
class DeleteObjectRequest : public ObjectRequest<S3Request> {
public:
    const char* GetServiceRequestName() const override { return "DeleteObject"; }
};

}  // namespace Aws::S3::Model
