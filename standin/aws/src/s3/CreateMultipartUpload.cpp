#include <aws/s3/model/CreateMultipartUploadRequest.h>

#include "s3/Operations.hpp"

namespace standin::aws::s3 {

namespace {

std::string_view faultOfUpload(const Answer& answer) {
    return childText(answer.root(), "UploadId").empty() ? "lacks UploadId" : std::string_view();
}

}  // namespace

OperationCall describe(const Aws::S3::Model::CreateMultipartUploadRequest& request) {
    auto call = objectCall(Aws::Http::HttpMethod::HTTP_POST, AnswerBody::Document, request);
    call.faultOf = faultOfUpload;
    call.subresource = "uploads";
    return call;
}

Aws::S3::Model::CreateMultipartUploadResult createMultipartUploadResult(Answer& answer) {
    Aws::S3::Model::CreateMultipartUploadResult result;
    result.SetBucket(childText(answer.root(), "Bucket"));
    result.SetKey(childText(answer.root(), "Key"));
    result.SetUploadId(childText(answer.root(), "UploadId"));
    return result;
}

}  // namespace standin::aws::s3
