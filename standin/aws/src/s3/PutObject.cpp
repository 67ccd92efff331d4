#include <aws/s3/model/PutObjectRequest.h>

#include "s3/Operations.hpp"

namespace standin::aws::s3 {

OperationCall describe(const Aws::S3::Model::PutObjectRequest& request) {
    return sendingCall(request);
}

Aws::S3::Model::PutObjectResult putObjectResult(Answer& answer) {
    Aws::S3::Model::PutObjectResult result;
    result.SetETag(headerValue(answer.headers, "etag"));
    result.SetVersionId(headerValue(answer.headers, "x-amz-version-id"));
    return result;
}

}  // namespace standin::aws::s3
