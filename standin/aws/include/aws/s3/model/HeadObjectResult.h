#pragma once

#include <aws/core/utils/DateTime.h>
#include <aws/core/utils/memory/stl/AWSMap.h>
#include <aws/core/utils/memory/stl/AWSString.h>

#include <utility>

namespace Aws::S3::Model {

/// What an object is, without its bytes.
class HeadObjectResult {
public:
    /// Bytes; 0 when the answer did not say.
    long long GetContentLength() const { return contentLength_; }
    void SetContentLength(long long contentLength) { contentLength_ = contentLength; }

    /// Whole seconds. The epoch when absent; not parsed successfully when it was no RFC 822 date.
    const Aws::Utils::DateTime& GetLastModified() const { return lastModified_; }
    void SetLastModified(const Aws::Utils::DateTime& lastModified) { lastModified_ = lastModified; }

    /// With its quotes, as S3 sent it.
    const Aws::String& GetETag() const { return eTag_; }
    void SetETag(Aws::String eTag) { eTag_ = std::move(eTag); }

    const Aws::String& GetContentType() const { return contentType_; }
    void SetContentType(Aws::String contentType) { contentType_ = std::move(contentType); }

    const Aws::String& GetContentEncoding() const { return contentEncoding_; }
    void SetContentEncoding(Aws::String contentEncoding) { contentEncoding_ = std::move(contentEncoding); }

    const Aws::String& GetVersionId() const { return versionId_; }
    void SetVersionId(Aws::String versionId) { versionId_ = std::move(versionId); }

    bool GetDeleteMarker() const { return deleteMarker_; }
    void SetDeleteMarker(bool deleteMarker) { deleteMarker_ = deleteMarker; }

    /// The object's own metadata; lower-case names without "x-amz-meta-".
    const Aws::Map<Aws::String, Aws::String>& GetMetadata() const { return metadata_; }
    void SetMetadata(Aws::Map<Aws::String, Aws::String> metadata) { metadata_ = std::move(metadata); }

private:
    long long contentLength_ = 0;
    Aws::Utils::DateTime lastModified_;
    Aws::String eTag_;
    Aws::String contentType_;
    Aws::String contentEncoding_;
    Aws::String versionId_;
    bool deleteMarker_ = false;
    Aws::Map<Aws::String, Aws::String> metadata_;
};

}  // namespace Aws::S3::Model
