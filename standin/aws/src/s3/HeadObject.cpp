#include <aws/s3/model/HeadObjectRequest.h>

#include "s3/Operations.hpp"

namespace standin::aws::s3 {

OperationCall describe(const Aws::S3::Model::HeadObjectRequest& request) {
    return objectCall(Aws::Http::HttpMethod::HTTP_HEAD, AnswerBody::Length, request);
}

Aws::S3::Model::HeadObjectResult headObjectResult(Answer& answer) {
    Aws::S3::Model::HeadObjectResult result;
    result.SetContentLength(leadingNumber(headerValue(answer.headers, "content-length")));
    result.SetLastModified(headerDate(answer.headers, "last-modified"));
    result.SetETag(headerValue(answer.headers, "etag"));
    result.SetContentType(headerValue(answer.headers, "content-type"));
    result.SetContentEncoding(headerValue(answer.headers, "content-encoding"));
    result.SetVersionId(headerValue(answer.headers, "x-amz-version-id"));
    result.SetDeleteMarker(isTrue(headerValue(answer.headers, "x-amz-delete-marker")));
    result.SetMetadata(metadataIn(answer.headers));
    return result;
}

}  // namespace standin::aws::s3
