#include <aws/s3/model/HeadBucketRequest.h>

#include "s3/Operations.hpp"

namespace standin::aws::s3 {

OperationCall describe(const Aws::S3::Model::HeadBucketRequest& request) {
    return bucketCall(Aws::Http::HttpMethod::HTTP_HEAD, AnswerBody::Content, request);
}

Aws::S3::Model::HeadBucketResult headBucketResult(Answer& answer) {
    Aws::S3::Model::HeadBucketResult result;
    result.SetBucketRegion(headerValue(answer.headers, "x-amz-bucket-region"));
    return result;
}

}  // namespace standin::aws::s3
