#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>

#include <utility>

namespace Aws::S3::Model {

/// An object that was written.
class PutObjectResult {
public:
    /// With its quotes, as S3 sent it.
    const Aws::String& GetETag() const { return eTag_; }
    void SetETag(Aws::String eTag) { eTag_ = std::move(eTag); }

    const Aws::String& GetVersionId() const { return versionId_; }
    void SetVersionId(Aws::String versionId) { versionId_ = std::move(versionId); }

private:
    Aws::String eTag_;
    Aws::String versionId_;
};

}  // namespace Aws::S3::Model
