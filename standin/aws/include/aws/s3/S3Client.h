#pragma once

#include <aws/core/auth/AWSCredentials.h>
#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/s3/S3ServiceClientModel.h>

#include <memory>

namespace standin::aws::s3 {
class Service;
}

namespace Aws::S3 {

/// Amazon S3. Every operation is one request, sent again as the configuration's retry strategy says, and
/// blocks until its outcome is known; any number of threads may call at once. What the credentials provider
/// throws passes through; all other failures are in the outcome. An unset required field, and an empty key
/// where an object is meant, is MISSING_PARAMETER and sends nothing.
class S3Client {
public:
    /// Sends nothing, but asks the provider for credentials, which may; what that throws passes through. A
    /// null endpoint provider stands for a new S3EndpointProvider.
    S3Client(std::shared_ptr<Aws::Auth::AWSCredentialsProvider> credentialsProvider,
             std::shared_ptr<S3EndpointProviderBase> endpointProvider,
             const S3ClientConfiguration& configuration = S3ClientConfiguration());
    S3Client(const Aws::Auth::AWSCredentials& credentials,
             std::shared_ptr<S3EndpointProviderBase> endpointProvider,
             const S3ClientConfiguration& configuration = S3ClientConfiguration());
    virtual ~S3Client();
    S3Client(const S3Client&) = delete;
    S3Client& operator=(const S3Client&) = delete;

    virtual Model::HeadObjectOutcome HeadObject(const Model::HeadObjectRequest& request) const;
    virtual Model::HeadBucketOutcome HeadBucket(const Model::HeadBucketRequest& request) const;
    virtual Model::GetBucketLocationOutcome GetBucketLocation(
        const Model::GetBucketLocationRequest& request) const;
    virtual Model::ListObjectsV2Outcome ListObjectsV2(const Model::ListObjectsV2Request& request) const;
    virtual Model::GetObjectOutcome GetObject(const Model::GetObjectRequest& request) const;
    virtual Model::PutObjectOutcome PutObject(const Model::PutObjectRequest& request) const;
    virtual Model::DeleteObjectOutcome DeleteObject(const Model::DeleteObjectRequest& request) const;
    virtual Model::CreateMultipartUploadOutcome CreateMultipartUpload(
        const Model::CreateMultipartUploadRequest& request) const;
    virtual Model::UploadPartOutcome UploadPart(const Model::UploadPartRequest& request) const;
    virtual Model::UploadPartCopyOutcome UploadPartCopy(const Model::UploadPartCopyRequest& request) const;
    virtual Model::CompleteMultipartUploadOutcome CompleteMultipartUpload(
        const Model::CompleteMultipartUploadRequest& request) const;
    virtual Model::AbortMultipartUploadOutcome AbortMultipartUpload(
        const Model::AbortMultipartUploadRequest& request) const;

private:
    std::unique_ptr<const standin::aws::s3::Service> service_;
};

}  // namespace Aws::S3
