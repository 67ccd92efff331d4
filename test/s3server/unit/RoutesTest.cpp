#include "operations/Routes.hpp"

#include <gmock/gmock.h>

#include "Refusal.hpp"

namespace s3server::test {
namespace {

Request requestFor(const std::string& method, const std::string& target, bool copies = false) {
    Request request;
    request.method = method;
    request.target = target;
    if (copies) request.headers = {{"x-amz-copy-source", "b/k"}};
    locate(request, {});
    return request;
}

struct Case {
    const char* method;
    const char* target;
    bool copies;
    const char* operation;
};

TEST(Routes, TellOperationsApartByMethodResourceParametersAndCopySource) {
    const Case cases[] = {
        {"GET", "/", false, "ListBuckets"},
        {"PUT", "/b", false, "CreateBucket"},
        {"DELETE", "/b/", false, "DeleteBucket"},
        {"HEAD", "/b", false, "HeadBucket"},
        {"GET", "/b?location", false, "GetBucketLocation"},
        {"GET", "/b/?list-type=2&prefix=p", false, "ListObjectsV2"},
        {"GET", "/b?prefix=p", false, "ListObjects"},
        {"GET", "/b?uploads", false, "ListMultipartUploads"},
        {"POST", "/b?delete", false, "DeleteObjects"},
        {"GET", "/b/k?x-id=GetObject", false, "GetObject"},
        {"HEAD", "/b/k", false, "HeadObject"},
        {"GET", "/b/k?tagging", false, "GetObjectTagging"},
        {"PUT", "/b/k", false, "PutObject"},
        {"PUT", "/b/k", true, "CopyObject"},
        {"DELETE", "/b/k", false, "DeleteObject"},
        {"POST", "/b/k?uploads", false, "CreateMultipartUpload"},
        {"PUT", "/b/k?uploadId=u&partNumber=1", false, "UploadPart"},
        {"PUT", "/b/k?partNumber=1&uploadId=u", true, "UploadPartCopy"},
        {"POST", "/b/k?uploadId=u", false, "CompleteMultipartUpload"},
        {"DELETE", "/b/k?uploadId=u", false, "AbortMultipartUpload"},
        {"GET", "/b/k?uploadId=u", false, "ListParts"},
    };
    for (const auto& [method, target, copies, operation] : cases)
        EXPECT_EQ(findRoute(requestFor(method, target, copies)).operation, operation)
            << method << ' ' << target;
}

TEST(Routes, NeverTakeAnOperationForASimplerOne) {
    for (const char* const target : {"/b/k?tagging", "/b/k?acl", "/b/k?uploadId=u", "/b/k?partNumber=1",
                                     "/b/k?versionId=1", "/b/k?retention"})
        EXPECT_EQ(codeOf([target] { findRoute(requestFor("PUT", target)); }), "NotImplemented") << target;
    EXPECT_EQ(codeOf([] { findRoute(requestFor("DELETE", "/b?policy")); }), "NotImplemented");
}

TEST(Routes, RefuseMethodsThatS3DoesntHave) {
    EXPECT_EQ(codeOf([] { findRoute(requestFor("PATCH", "/b/k")); }), "MethodNotAllowed");
    EXPECT_EQ(codeOf([] { findRoute(requestFor("POST", "/b/k")); }), "MethodNotAllowed");
    EXPECT_EQ(codeOf([] { findRoute(requestFor("DELETE", "/")); }), "MethodNotAllowed");
}

}  // namespace
}  // namespace s3server::test
