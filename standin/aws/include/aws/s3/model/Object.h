#pragma once

#include <aws/core/utils/DateTime.h>
#include <aws/core/utils/memory/stl/AWSString.h>

#include <utility>

namespace Aws::S3::Model {

/// An entry of a listing.
class Object {
public:
    const Aws::String& GetKey() const { return key_; }
    void SetKey(Aws::String key) { key_ = std::move(key); }

    /// Whole seconds. The epoch when absent; not parsed successfully when it was no ISO 8601 date.
    const Aws::Utils::DateTime& GetLastModified() const { return lastModified_; }
    void SetLastModified(const Aws::Utils::DateTime& lastModified) { lastModified_ = lastModified; }

    /// With its quotes, as S3 sent it.
    const Aws::String& GetETag() const { return eTag_; }
    void SetETag(Aws::String eTag) { eTag_ = std::move(eTag); }

    /// Bytes.
    long long GetSize() const { return size_; }
    void SetSize(long long size) { size_ = size; }

private:
    Aws::String key_;
    Aws::Utils::DateTime lastModified_;
    Aws::String eTag_;
    long long size_ = 0;
};

}  // namespace Aws::S3::Model
