#pragma once

#include <aws/s3/S3Request.h>
#include <aws/s3/model/Addressing.h>

namespace Aws::S3::Model {

/// Gives a multipart upload up; its parts go.
class AbortMultipartUploadRequest : public UploadRequest<S3Request> {
public:
    const char* GetServiceRequestName() const override { return "AbortMultipartUpload"; }
};

}  // namespace Aws::S3::Model
