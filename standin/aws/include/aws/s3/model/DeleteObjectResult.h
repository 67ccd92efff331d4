#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>

#include <utility>

namespace Aws::S3::Model {

/// An object that is gone. S3 gives the same answer when there was none.
class DeleteObjectResult {
public:
    bool GetDeleteMarker() const { return deleteMarker_; }
    void SetDeleteMarker(bool deleteMarker) { deleteMarker_ = deleteMarker; }

    const Aws::String& GetVersionId() const { return versionId_; }
    void SetVersionId(Aws::String versionId) { versionId_ = std::move(versionId); }

private:
    bool deleteMarker_ = false;
    Aws::String versionId_;
};

}  // namespace Aws::S3::Model
