#include <aws/s3/model/UploadPartRequest.h>

#include "s3/Operations.hpp"

namespace standin::aws::s3 {

OperationCall describe(const Aws::S3::Model::UploadPartRequest& request) {
    auto call = sendingCall(request);
    call.require(request.PartNumberHasBeenSet(), "PartNumber");
    call.require(request.UploadIdHasBeenSet(), "UploadId");
    call.query = {{"partNumber", std::to_string(request.GetPartNumber())},
                  {"uploadId", request.GetUploadId()}};
    return call;
}

Aws::S3::Model::UploadPartResult uploadPartResult(Answer& answer) {
    Aws::S3::Model::UploadPartResult result;
    result.SetETag(headerValue(answer.headers, "etag"));
    return result;
}

}  // namespace standin::aws::s3
