#pragma once

#include <aws/s3/S3Request.h>
#include <aws/s3/model/Addressing.h>

namespace Aws::S3::Model {

/// Begins a multipart upload.
class CreateMultipartUploadRequest : public ObjectRequest<S3Request> {
public:
    const char* GetServiceRequestName() const override { return "CreateMultipartUpload"; }
};

}  // namespace Aws::S3::Model
