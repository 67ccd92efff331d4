#include <aws/s3/model/ListObjectsV2Request.h>

#include "s3/Operations.hpp"

namespace standin::aws::s3 {

using namespace Aws::S3::Model;

namespace {

Object objectIn(const tinyxml2::XMLElement& contents) {
    Object object;
    object.SetKey(childText(&contents, "Key"));
    object.SetLastModified(childDate(&contents, "LastModified"));
    object.SetETag(childText(&contents, "ETag"));
    object.SetSize(leadingNumber(childText(&contents, "Size")));
    return object;
}

CommonPrefix commonPrefixIn(const tinyxml2::XMLElement& element) {
    CommonPrefix prefix;
    prefix.SetPrefix(childText(&element, "Prefix"));
    return prefix;
}

std::string_view faultOfListing(const Answer& answer) {
    if (!hasRoot(answer, "ListBucketResult")) return "lacks the element ListBucketResult";
    const bool goesOn = isTrue(trimmedChildText(answer.root(), "IsTruncated"));
    const bool saysWhere = !childText(answer.root(), "NextContinuationToken").empty();
    return goesOn && !saysWhere ? "lacks NextContinuationToken and is truncated" : std::string_view();
}

int childNumber(const tinyxml2::XMLElement* root, const char* name) {
    return static_cast<int>(leadingNumber(childText(root, name)));
}

}  // namespace

OperationCall describe(const ListObjectsV2Request& request) {
    auto call = bucketCall(Aws::Http::HttpMethod::HTTP_GET, AnswerBody::Document, request);
    call.faultOf = faultOfListing;
    auto& query = call.query;
    query.emplace_back("list-type", "2");
    if (request.DelimiterHasBeenSet()) query.emplace_back("delimiter", request.GetDelimiter());
    if (request.GetEncodingType() != EncodingType::NOT_SET) {
        query.emplace_back("encoding-type",
                           EncodingTypeMapper::GetNameForEncodingType(request.GetEncodingType()));
    }
    if (request.MaxKeysHasBeenSet()) query.emplace_back("max-keys", std::to_string(request.GetMaxKeys()));
    if (request.PrefixHasBeenSet()) query.emplace_back("prefix", request.GetPrefix());
    if (request.ContinuationTokenHasBeenSet()) {
        query.emplace_back("continuation-token", request.GetContinuationToken());
    }
    if (request.StartAfterHasBeenSet()) query.emplace_back("start-after", request.GetStartAfter());
    return call;
}

ListObjectsV2Result listObjectsV2Result(Answer& answer) {
    const auto* root = answer.root();
    ListObjectsV2Result result;
    result.SetIsTruncated(isTrue(trimmedChildText(root, "IsTruncated")));
    forEachChild(root, "Contents", [&](const auto& each) { result.AddContents(objectIn(each)); });
    result.SetName(childText(root, "Name"));
    result.SetPrefix(childText(root, "Prefix"));
    result.SetDelimiter(childText(root, "Delimiter"));
    result.SetMaxKeys(childNumber(root, "MaxKeys"));
    forEachChild(root, "CommonPrefixes",
                 [&](const auto& each) { result.AddCommonPrefixes(commonPrefixIn(each)); });
    result.SetEncodingType(
        EncodingTypeMapper::GetEncodingTypeForName(trimmedChildText(root, "EncodingType")));
    result.SetKeyCount(childNumber(root, "KeyCount"));
    result.SetContinuationToken(childText(root, "ContinuationToken"));
    result.SetNextContinuationToken(childText(root, "NextContinuationToken"));
    result.SetStartAfter(childText(root, "StartAfter"));
    return result;
}

}  // namespace standin::aws::s3
