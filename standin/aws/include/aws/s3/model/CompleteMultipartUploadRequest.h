#pragma once

#include <aws/s3/S3Request.h>
#include <aws/s3/model/Addressing.h>
#include <aws/s3/model/CompletedMultipartUpload.h>
#include <aws/s3/model/Field.h>

#include <utility>

namespace Aws::S3::Model {

/// Makes an object of the parts of a multipart upload.
class CompleteMultipartUploadRequest : public UploadRequest<S3Request> {
public:
    const char* GetServiceRequestName() const override { return "CompleteMultipartUpload"; }
    /// Empty when there are no parts.
    Aws::String SerializePayload() const override;

    const CompletedMultipartUpload& GetMultipartUpload() const { return multipartUpload_.get(); }
    bool MultipartUploadHasBeenSet() const { return multipartUpload_.isSet(); }
    void SetMultipartUpload(CompletedMultipartUpload multipartUpload) {
        multipartUpload_.set(std::move(multipartUpload));
    }

private:
    Field<CompletedMultipartUpload> multipartUpload_;
};

}  // namespace Aws::S3::Model
