#include <aws/s3/S3Client.h>

#include "s3/Operations.hpp"
#include "s3/Service.hpp"

namespace Aws::S3 {

using namespace standin::aws::s3;
using namespace Model;

namespace {

using CredentialsProvider = std::shared_ptr<Aws::Auth::AWSCredentialsProvider>;

/// The SDK asks so often while a client is made, and has no use for the answers. Providers notice: their
/// first request to a metadata service falls into this time.
CredentialsProvider askedThreeTimes(CredentialsProvider provider) {
    for (int i = 0; i < 3; ++i)
        provider->GetAWSCredentials();
    return provider;
}

}  // namespace

S3Client::S3Client(std::shared_ptr<Aws::Auth::AWSCredentialsProvider> credentialsProvider,
                   std::shared_ptr<S3EndpointProviderBase> endpointProvider,
                   const S3ClientConfiguration& configuration)
    : service_(std::make_unique<const Service>(askedThreeTimes(std::move(credentialsProvider)),
                                               std::move(endpointProvider), configuration)) {}

S3Client::S3Client(const Aws::Auth::AWSCredentials& credentials,
                   std::shared_ptr<S3EndpointProviderBase> endpointProvider,
                   const S3ClientConfiguration& configuration)
    : S3Client(std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>(credentials),
               std::move(endpointProvider), configuration) {}

S3Client::~S3Client() = default;

HeadObjectOutcome S3Client::HeadObject(const HeadObjectRequest& request) const {
    return service_->perform(describe(request), headObjectResult);
}

HeadBucketOutcome S3Client::HeadBucket(const HeadBucketRequest& request) const {
    return service_->perform(describe(request), headBucketResult);
}

GetBucketLocationOutcome S3Client::GetBucketLocation(const GetBucketLocationRequest& request) const {
    return service_->perform(describe(request), getBucketLocationResult);
}

ListObjectsV2Outcome S3Client::ListObjectsV2(const ListObjectsV2Request& request) const {
    return service_->perform(describe(request), listObjectsV2Result);
}

GetObjectOutcome S3Client::GetObject(const GetObjectRequest& request) const {
    return service_->perform(describe(request), getObjectResult);
}

PutObjectOutcome S3Client::PutObject(const PutObjectRequest& request) const {
    return service_->perform(describe(request), putObjectResult);
}

DeleteObjectOutcome S3Client::DeleteObject(const DeleteObjectRequest& request) const {
    return service_->perform(describe(request), deleteObjectResult);
}

CreateMultipartUploadOutcome S3Client::CreateMultipartUpload(
    const CreateMultipartUploadRequest& request) const {
    return service_->perform(describe(request), createMultipartUploadResult);
}

UploadPartOutcome S3Client::UploadPart(const UploadPartRequest& request) const {
    return service_->perform(describe(request), uploadPartResult);
}

UploadPartCopyOutcome S3Client::UploadPartCopy(const UploadPartCopyRequest& request) const {
    return service_->perform(describe(request), uploadPartCopyResult);
}

CompleteMultipartUploadOutcome S3Client::CompleteMultipartUpload(
    const CompleteMultipartUploadRequest& request) const {
    return service_->perform(describe(request), completeMultipartUploadResult);
}

AbortMultipartUploadOutcome S3Client::AbortMultipartUpload(const AbortMultipartUploadRequest& request) const {
    return service_->perform(describe(request), abortMultipartUploadResult);
}

}  // namespace Aws::S3
