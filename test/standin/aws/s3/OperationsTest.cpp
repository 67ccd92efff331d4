#include "s3/Operations.hpp"

#include <aws/s3/model/CompleteMultipartUploadRequest.h>
#include <aws/s3/model/DeleteObjectRequest.h>
#include <aws/s3/model/DeleteObjectResult.h>
#include <aws/s3/model/GetBucketLocationResult.h>
#include <aws/s3/model/GetObjectResult.h>
#include <aws/s3/model/HeadObjectResult.h>
#include <aws/s3/model/ListObjectsV2Request.h>
#include <aws/s3/model/ListObjectsV2Result.h>
#include <aws/s3/model/UploadPartCopyRequest.h>
#include <gtest/gtest.h>

#include <sstream>

#include "s3/Answer.hpp"
#include "s3/OperationCall.hpp"

using namespace standin::aws::s3;
using namespace Aws::S3::Model;

namespace {

Answer answerWith(const std::string& document) {
    Answer answer;
    answer.document = std::make_unique<XmlDocument>(document);
    return answer;
}

std::string bodyOf(const OperationCall& call) {
    std::ostringstream content;
    if (call.body) content << call.body->rdbuf();
    return content.str();
}

}  // namespace

TEST(DeleteObjectCall, NeedsABucketAndAKeyThatArentEmpty) {
    EXPECT_EQ(describe(DeleteObjectRequest()).missingField, "Bucket");
    DeleteObjectRequest request;
    request.SetBucket("b");
    EXPECT_EQ(describe(request).missingField, "Key");
    request.SetKey("");
    EXPECT_EQ(describe(request).missingField, "Key");
    request.SetKey("k");
    EXPECT_EQ(describe(request).missingField, "");
}

TEST(UploadPartCopyCall, EncodesTheSourceSegmentBySegment) {
    UploadPartCopyRequest request;
    request.SetBucket("b");
    request.SetKey("k");
    request.SetUploadId("id");
    request.SetPartNumber(1);
    request.SetCopySource("b/dir/a b+c%\xC3\xA4");
    EXPECT_EQ(describe(request).headers.at("x-amz-copy-source"), "b/dir/a%20b%2Bc%25%C3%A4");
}

TEST(CompleteMultipartUploadCall, KeepsTheOrderOfItsParts) {
    CompletedMultipartUpload parts;
    for (const int number : {3, 1}) {
        CompletedPart part;
        part.SetPartNumber(number);
        part.SetETag("t");
        parts.AddParts(part);
    }
    CompleteMultipartUploadRequest request;
    request.SetBucket("b");
    request.SetKey("k");
    request.SetUploadId("id");
    request.SetMultipartUpload(parts);
    const auto body = bodyOf(describe(request));
    ASSERT_NE(body.find("<PartNumber>3</PartNumber>"), std::string::npos) << body;
    EXPECT_LT(body.find("<PartNumber>3</PartNumber>"), body.find("<PartNumber>1</PartNumber>"));
}

TEST(ListObjectsV2Result, HoldsWhatThePageSays) {
    auto answer = answerWith(
        "<ListBucketResult><IsTruncated>true</IsTruncated><NextContinuationToken>a&amp;b</"
        "NextContinuationToken>"
        "<Contents><Key>x&lt;y</Key><Size>42</Size><LastModified>2020-01-02T03:04:05.000Z</LastModified></"
        "Contents>"
        "<CommonPrefixes><Prefix>d/</Prefix></CommonPrefixes></ListBucketResult>");
    const auto page = listObjectsV2Result(answer);
    EXPECT_TRUE(page.GetIsTruncated());
    EXPECT_EQ(page.GetNextContinuationToken(), "a&b");
    ASSERT_EQ(page.GetContents().size(), 1u);
    EXPECT_EQ(page.GetContents()[0].GetKey(), "x<y");
    EXPECT_EQ(page.GetContents()[0].GetSize(), 42);
    EXPECT_EQ(page.GetContents()[0].GetLastModified().Millis(), 1577934245000);
    ASSERT_EQ(page.GetCommonPrefixes().size(), 1u);
    EXPECT_EQ(page.GetCommonPrefixes()[0].GetPrefix(), "d/");
}

TEST(GetBucketLocationResult, IsTheRootsTextWhateverItIs) {
    const auto nameIn = [](const std::string& document) {
        auto answer = answerWith(document);
        return BucketLocationConstraintMapper::GetNameForBucketLocationConstraint(
            getBucketLocationResult(answer).GetLocationConstraint());
    };
    EXPECT_EQ(nameIn("<LocationConstraint>eu-west-3</LocationConstraint>"), "eu-west-3");
    EXPECT_EQ(nameIn("<LocationConstraint>EU</LocationConstraint>"), "EU");
    EXPECT_EQ(nameIn("<LocationConstraint>mars-north-1</LocationConstraint>"), "mars-north-1");
    EXPECT_EQ(nameIn("<LocationConstraint/>"), "");
}

TEST(IsTrue, MeansOneOrTheWordInAnyCase) {
    for (const char* const text : {"true", "TRUE", "True", "1"})
        EXPECT_TRUE(isTrue(text)) << text;
    for (const char* const text : {"", "false", "0", "01", "11", "yes", "true1", "tru", " 1"})
        EXPECT_FALSE(isTrue(text)) << text;
}

TEST(ListObjectsV2Result, IsTruncatedByAOneWithBlanksAroundIt) {
    auto answer = answerWith("<ListBucketResult><IsTruncated> 1\n</IsTruncated></ListBucketResult>");
    EXPECT_TRUE(listObjectsV2Result(answer).GetIsTruncated());
}

TEST(DeleteMarkers, AreMarkedByAOne) {
    Answer answer;
    answer.headers = {{"x-amz-delete-marker", "1"}};
    EXPECT_TRUE(headObjectResult(answer).GetDeleteMarker());
    EXPECT_TRUE(deleteObjectResult(answer).GetDeleteMarker());
    EXPECT_TRUE(getObjectResult(answer).GetDeleteMarker());
}

TEST(LeadingNumber, StaysInsideItsRange) {
    EXPECT_EQ(leadingNumber("42x"), 42);
    EXPECT_EQ(leadingNumber("  7"), 7);
    EXPECT_EQ(leadingNumber("x"), 0);
    EXPECT_EQ(leadingNumber("99999999999999999999"), INT64_MAX);
}
