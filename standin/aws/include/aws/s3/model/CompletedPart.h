#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>
#include <aws/s3/model/Field.h>

#include <utility>

namespace Aws::S3::Model {

/// A part to complete a multipart upload with.
class CompletedPart {
public:
    /// As UploadPart or UploadPartCopy gave it, quotes included.
    const Aws::String& GetETag() const { return eTag_.get(); }
    bool ETagHasBeenSet() const { return eTag_.isSet(); }
    void SetETag(Aws::String eTag) { eTag_.set(std::move(eTag)); }

    int GetPartNumber() const { return partNumber_.get(); }
    bool PartNumberHasBeenSet() const { return partNumber_.isSet(); }
    void SetPartNumber(int partNumber) { partNumber_.set(partNumber); }

private:
    Field<Aws::String> eTag_;
    Field<int> partNumber_;
};

}  // namespace Aws::S3::Model
