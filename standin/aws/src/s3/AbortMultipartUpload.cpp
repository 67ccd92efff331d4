#include <aws/s3/model/AbortMultipartUploadRequest.h>

#include "s3/Operations.hpp"

namespace standin::aws::s3 {

OperationCall describe(const Aws::S3::Model::AbortMultipartUploadRequest& request) {
    auto call = objectCall(Aws::Http::HttpMethod::HTTP_DELETE, AnswerBody::Document, request);
    call.require(request.UploadIdHasBeenSet(), "UploadId");
    call.query = {{"uploadId", request.GetUploadId()}};
    return call;
}

Aws::S3::Model::AbortMultipartUploadResult abortMultipartUploadResult(Answer&) {
    return {};
}

}  // namespace standin::aws::s3
