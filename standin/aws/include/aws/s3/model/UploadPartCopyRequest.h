#pragma once

#include <aws/core/http/HttpTypes.h>
#include <aws/core/utils/memory/stl/AWSString.h>
#include <aws/s3/S3Request.h>
#include <aws/s3/model/Addressing.h>
#include <aws/s3/model/Field.h>

#include <utility>

namespace Aws::S3::Model {

/// Stores bytes of an object as a part of a multipart upload.
class UploadPartCopyRequest : public PartRequest<S3Request> {
public:
    const char* GetServiceRequestName() const override { return "UploadPartCopy"; }

    /// Bucket, slash, key; without any encoding.
    const Aws::String& GetCopySource() const { return copySource_.get(); }
    bool CopySourceHasBeenSet() const { return copySource_.isSet(); }
    void SetCopySource(Aws::String copySource) { copySource_.set(std::move(copySource)); }

    /// Such as "bytes=0-9"; the whole object when not set.
    const Aws::String& GetCopySourceRange() const { return copySourceRange_.get(); }
    bool CopySourceRangeHasBeenSet() const { return copySourceRange_.isSet(); }
    void SetCopySourceRange(Aws::String copySourceRange) { copySourceRange_.set(std::move(copySourceRange)); }

    /// The headers that these two become.
    Aws::Http::HeaderValueCollection GetRequestSpecificHeaders() const;

private:
    Field<Aws::String> copySource_;
    Field<Aws::String> copySourceRange_;
};

}  // namespace Aws::S3::Model
