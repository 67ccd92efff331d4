#pragma once

#include <aws/core/utils/DateTime.h>
#include <aws/core/utils/memory/stl/AWSString.h>

#include <utility>

namespace Aws::S3::Model {

/// A part that was copied from an object.
class CopyPartResult {
public:
    /// With its quotes, as S3 sent it.
    const Aws::String& GetETag() const { return eTag_; }
    void SetETag(Aws::String eTag) { eTag_ = std::move(eTag); }

    /// Whole seconds. The epoch when absent; not parsed successfully when it was no ISO 8601 date.
    const Aws::Utils::DateTime& GetLastModified() const { return lastModified_; }
    void SetLastModified(const Aws::Utils::DateTime& lastModified) { lastModified_ = lastModified; }

private:
    Aws::String eTag_;
    Aws::Utils::DateTime lastModified_;
};

}  // namespace Aws::S3::Model
