#pragma once

#include <aws/s3/model/CopyPartResult.h>

#include <utility>

namespace Aws::S3::Model {

/// A part that was stored.
class UploadPartCopyResult {
public:
    const CopyPartResult& GetCopyPartResult() const { return copyPartResult_; }
    void SetCopyPartResult(CopyPartResult copyPartResult) { copyPartResult_ = std::move(copyPartResult); }

private:
    CopyPartResult copyPartResult_;
};

}  // namespace Aws::S3::Model
