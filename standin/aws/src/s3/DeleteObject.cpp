#include <aws/s3/model/DeleteObjectRequest.h>

#include "s3/Operations.hpp"

namespace standin::aws::s3 {

OperationCall describe(const Aws::S3::Model::DeleteObjectRequest& request) {
    return objectCall(Aws::Http::HttpMethod::HTTP_DELETE, AnswerBody::Document, request);
}

Aws::S3::Model::DeleteObjectResult deleteObjectResult(Answer& answer) {
    Aws::S3::Model::DeleteObjectResult result;
    result.SetDeleteMarker(isTrue(headerValue(answer.headers, "x-amz-delete-marker")));
    result.SetVersionId(headerValue(answer.headers, "x-amz-version-id"));
    return result;
}

}  // namespace standin::aws::s3
