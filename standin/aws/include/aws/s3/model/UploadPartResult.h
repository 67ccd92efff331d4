#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>

#include <utility>

namespace Aws::S3::Model {

/// A part that was stored.
class UploadPartResult {
public:
    /// With its quotes, as S3 sent it.
    const Aws::String& GetETag() const { return eTag_; }
    void SetETag(Aws::String eTag) { eTag_ = std::move(eTag); }

private:
    Aws::String eTag_;
};

}  // namespace Aws::S3::Model
