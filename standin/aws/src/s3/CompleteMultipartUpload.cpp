#include <aws/s3/model/CompleteMultipartUploadRequest.h>

#include "s3/Operations.hpp"

namespace Aws::S3::Model {

namespace {

void addText(tinyxml2::XMLElement& parent, const char* name, const Aws::String& text) {
    parent.InsertNewChildElement(name)->InsertNewText(text.c_str());
}

void addPart(tinyxml2::XMLElement& upload, const CompletedPart& part) {
    auto& element = *upload.InsertNewChildElement("Part");
    if (part.ETagHasBeenSet()) addText(element, "ETag", part.GetETag());
    if (part.PartNumberHasBeenSet()) addText(element, "PartNumber", std::to_string(part.GetPartNumber()));
}

}  // namespace

Aws::String CompleteMultipartUploadRequest::SerializePayload() const {
    const auto& parts = GetMultipartUpload().GetParts();
    if (parts.empty()) return {};
    tinyxml2::XMLDocument document;
    document.InsertEndChild(document.NewDeclaration("xml version=\"1.0\""));
    auto& upload = *document.InsertEndChild(document.NewElement("CompleteMultipartUpload"))->ToElement();
    upload.SetAttribute("xmlns", "http://s3.amazonaws.com/doc/2006-03-01/");
    for (const auto& part : parts)
        addPart(upload, part);
    return standin::aws::s3::printed(document);
}

}  // namespace Aws::S3::Model

namespace standin::aws::s3 {

namespace {

std::string_view faultOfCompletion(const Answer& answer) {
    return hasRoot(answer, "CompleteMultipartUploadResult")
               ? std::string_view()
               : "lacks the element CompleteMultipartUploadResult";
}

}  // namespace

OperationCall describe(const Aws::S3::Model::CompleteMultipartUploadRequest& request) {
    auto call = objectCall(Aws::Http::HttpMethod::HTTP_POST, AnswerBody::Document, request);
    call.faultOf = faultOfCompletion;
    call.require(request.UploadIdHasBeenSet(), "UploadId");
    call.query = {{"uploadId", request.GetUploadId()}};
    call.body = request.GetBody();
    return call;
}

Aws::S3::Model::CompleteMultipartUploadResult completeMultipartUploadResult(Answer& answer) {
    Aws::S3::Model::CompleteMultipartUploadResult result;
    result.SetLocation(childText(answer.root(), "Location"));
    result.SetBucket(childText(answer.root(), "Bucket"));
    result.SetKey(childText(answer.root(), "Key"));
    result.SetETag(childText(answer.root(), "ETag"));
    result.SetVersionId(headerValue(answer.headers, "x-amz-version-id"));
    return result;
}

}  // namespace standin::aws::s3
