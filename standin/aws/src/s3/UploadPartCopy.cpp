#include <aws/s3/model/UploadPartCopyRequest.h>

#include "core/PercentEncoding.hpp"
#include "s3/Operations.hpp"

Aws::Http::HeaderValueCollection Aws::S3::Model::UploadPartCopyRequest::GetRequestSpecificHeaders() const {
    Aws::Http::HeaderValueCollection headers;
    if (CopySourceHasBeenSet())
        headers["x-amz-copy-source"] = standin::aws::encodeCanonicalPath(GetCopySource());
    if (CopySourceRangeHasBeenSet()) headers["x-amz-copy-source-range"] = GetCopySourceRange();
    return headers;
}

namespace standin::aws::s3 {

namespace {

std::string_view faultOfCopy(const Answer& answer) {
    return childText(answer.root(), "ETag").empty() ? "lacks ETag" : std::string_view();
}

}  // namespace

OperationCall describe(const Aws::S3::Model::UploadPartCopyRequest& request) {
    auto call = objectCall(Aws::Http::HttpMethod::HTTP_PUT, AnswerBody::Document, request);
    call.faultOf = faultOfCopy;
    call.require(request.CopySourceHasBeenSet(), "CopySource");
    call.require(request.PartNumberHasBeenSet(), "PartNumber");
    call.require(request.UploadIdHasBeenSet(), "UploadId");
    call.query = {{"partNumber", std::to_string(request.GetPartNumber())},
                  {"uploadId", request.GetUploadId()}};
    call.headers.merge(request.GetRequestSpecificHeaders());
    return call;
}

Aws::S3::Model::UploadPartCopyResult uploadPartCopyResult(Answer& answer) {
    Aws::S3::Model::CopyPartResult part;
    part.SetETag(childText(answer.root(), "ETag"));
    part.SetLastModified(childDate(answer.root(), "LastModified"));
    Aws::S3::Model::UploadPartCopyResult result;
    result.SetCopyPartResult(std::move(part));
    return result;
}

}  // namespace standin::aws::s3
