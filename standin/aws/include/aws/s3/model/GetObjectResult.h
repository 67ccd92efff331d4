#pragma once

#include <aws/core/utils/DateTime.h>
#include <aws/core/utils/memory/stl/AWSMap.h>
#include <aws/core/utils/memory/stl/AWSStreamFwd.h>
#include <aws/core/utils/memory/stl/AWSString.h>
#include <aws/core/utils/stream/ResponseStream.h>

#include <utility>

namespace Aws::S3::Model {

/// An object's bytes, or a range of them. Can be moved, not copied.
class GetObjectResult {
public:
    /// All bytes have arrived; positioned at the first. Only of a successful outcome's result, and not after
    /// the result was moved from.
    Aws::IOStream& GetBody() const { return body_.GetUnderlyingStream(); }
    /// Takes the stream over.
    void ReplaceBody(Aws::IOStream* body) { body_ = Aws::Utils::Stream::ResponseStream(body); }
    void SetBody(Aws::Utils::Stream::ResponseStream body) { body_ = std::move(body); }

    /// Bytes of the body; 0 when the answer did not say.
    long long GetContentLength() const { return contentLength_; }
    void SetContentLength(long long contentLength) { contentLength_ = contentLength; }

    /// Whole seconds. The epoch when absent; not parsed successfully when it was no RFC 822 date.
    const Aws::Utils::DateTime& GetLastModified() const { return lastModified_; }
    void SetLastModified(const Aws::Utils::DateTime& lastModified) { lastModified_ = lastModified; }

    /// With its quotes, as S3 sent it.
    const Aws::String& GetETag() const { return eTag_; }
    void SetETag(Aws::String eTag) { eTag_ = std::move(eTag); }

    /// Such as "bytes 100-104/999"; empty for a whole object.
    const Aws::String& GetContentRange() const { return contentRange_; }
    void SetContentRange(Aws::String contentRange) { contentRange_ = std::move(contentRange); }

    const Aws::String& GetContentType() const { return contentType_; }
    void SetContentType(Aws::String contentType) { contentType_ = std::move(contentType); }

    /// The body is handed over as it was sent, still in this encoding.
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
    Aws::Utils::Stream::ResponseStream body_;
    long long contentLength_ = 0;
    Aws::Utils::DateTime lastModified_;
    Aws::String eTag_;
    Aws::String contentRange_;
    Aws::String contentType_;
    Aws::String contentEncoding_;
    Aws::String versionId_;
    bool deleteMarker_ = false;
    Aws::Map<Aws::String, Aws::String> metadata_;
};

}  // namespace Aws::S3::Model
