#include <aws/s3/model/GetBucketLocationRequest.h>

#include "s3/Operations.hpp"

namespace standin::aws::s3 {

namespace Mapper = Aws::S3::Model::BucketLocationConstraintMapper;

namespace {

// Servers name the element as they like, but what has elements in it, as HTML has, tells of no place.
std::string_view faultOfLocation(const Answer& answer) {
    const auto* root = answer.root();
    return root == nullptr || root->FirstChildElement() != nullptr ? "lacks a location" : std::string_view();
}

}  // namespace

OperationCall describe(const Aws::S3::Model::GetBucketLocationRequest& request) {
    auto call = bucketCall(Aws::Http::HttpMethod::HTTP_GET, AnswerBody::Document, request);
    call.faultOf = faultOfLocation;
    call.subresource = "location";
    return call;
}

Aws::S3::Model::GetBucketLocationResult getBucketLocationResult(Answer& answer) {
    Aws::S3::Model::GetBucketLocationResult result;
    if (answer.root() == nullptr) return result;
    result.SetLocationConstraint(
        Mapper::GetBucketLocationConstraintForName(trimmed(printedText(*answer.root()))));
    return result;
}

}  // namespace standin::aws::s3
