#pragma once

#include <aws/s3/S3Client.h>
#include <aws/s3/model/AbortMultipartUploadRequest.h>
#include <aws/s3/model/CompleteMultipartUploadRequest.h>
#include <aws/s3/model/CreateMultipartUploadRequest.h>
#include <aws/s3/model/DeleteObjectRequest.h>
#include <aws/s3/model/GetBucketLocationRequest.h>
#include <aws/s3/model/GetObjectRequest.h>
#include <aws/s3/model/HeadBucketRequest.h>
#include <aws/s3/model/HeadObjectRequest.h>
#include <aws/s3/model/ListObjectsV2Request.h>
#include <aws/s3/model/PutObjectRequest.h>
#include <aws/s3/model/UploadPartCopyRequest.h>
#include <aws/s3/model/UploadPartRequest.h>
#include <gmock/gmock.h>

namespace testsupport {

/// An SDK client that answers from a test's expectations. Sends nothing.
class MockS3Client : public Aws::S3::S3Client {
public:
    MockS3Client();
    ~MockS3Client() override;
    MockS3Client(const MockS3Client&) = delete;
    MockS3Client& operator=(const MockS3Client&) = delete;

#define S3PROVIDER_MOCK_OPERATION(name)                                                      \
    MOCK_METHOD(Aws::S3::Model::name##Outcome, name, (const Aws::S3::Model::name##Request&), \
                (const, override))
    S3PROVIDER_MOCK_OPERATION(HeadObject);
    S3PROVIDER_MOCK_OPERATION(HeadBucket);
    S3PROVIDER_MOCK_OPERATION(GetBucketLocation);
    S3PROVIDER_MOCK_OPERATION(ListObjectsV2);
    S3PROVIDER_MOCK_OPERATION(GetObject);
    S3PROVIDER_MOCK_OPERATION(PutObject);
    S3PROVIDER_MOCK_OPERATION(DeleteObject);
    S3PROVIDER_MOCK_OPERATION(CreateMultipartUpload);
    S3PROVIDER_MOCK_OPERATION(UploadPart);
    S3PROVIDER_MOCK_OPERATION(UploadPartCopy);
    S3PROVIDER_MOCK_OPERATION(CompleteMultipartUpload);
    S3PROVIDER_MOCK_OPERATION(AbortMultipartUpload);
#undef S3PROVIDER_MOCK_OPERATION
};

}  // namespace testsupport
