#include <aws/s3/model/GetObjectRequest.h>

#include "core/BufferStream.hpp"
#include "s3/Operations.hpp"

namespace standin::aws::s3 {

OperationCall describe(const Aws::S3::Model::GetObjectRequest& request) {
    auto call = objectCall(Aws::Http::HttpMethod::HTTP_GET, AnswerBody::Content, request);
    if (request.RangeHasBeenSet()) call.headers["range"] = request.GetRange();
    return call;
}

Aws::S3::Model::GetObjectResult getObjectResult(Answer& answer) {
    Aws::S3::Model::GetObjectResult result;
    result.SetBody(Aws::Utils::Stream::ResponseStream(new BufferStream(std::move(answer.body))));
    result.SetContentLength(leadingNumber(headerValue(answer.headers, "content-length")));
    result.SetLastModified(headerDate(answer.headers, "last-modified"));
    result.SetETag(headerValue(answer.headers, "etag"));
    result.SetContentRange(headerValue(answer.headers, "content-range"));
    result.SetContentType(headerValue(answer.headers, "content-type"));
    result.SetContentEncoding(headerValue(answer.headers, "content-encoding"));
    result.SetVersionId(headerValue(answer.headers, "x-amz-version-id"));
    result.SetDeleteMarker(isTrue(headerValue(answer.headers, "x-amz-delete-marker")));
    result.SetMetadata(metadataIn(answer.headers));
    return result;
}

}  // namespace standin::aws::s3
