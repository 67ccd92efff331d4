#pragma once

#include <aws/s3/S3ServiceClientModel.h>

#include "s3/Answer.hpp"
#include "s3/OperationCall.hpp"

/// Every operation in two pure functions: the call its request describes, and the result its successful
/// answer holds. What an answer lacks is empty in the result.
namespace standin::aws::s3 {

OperationCall describe(const Aws::S3::Model::HeadObjectRequest& request);
OperationCall describe(const Aws::S3::Model::HeadBucketRequest& request);
OperationCall describe(const Aws::S3::Model::GetBucketLocationRequest& request);
OperationCall describe(const Aws::S3::Model::ListObjectsV2Request& request);
OperationCall describe(const Aws::S3::Model::GetObjectRequest& request);
OperationCall describe(const Aws::S3::Model::PutObjectRequest& request);
OperationCall describe(const Aws::S3::Model::DeleteObjectRequest& request);
OperationCall describe(const Aws::S3::Model::CreateMultipartUploadRequest& request);
OperationCall describe(const Aws::S3::Model::UploadPartRequest& request);
OperationCall describe(const Aws::S3::Model::UploadPartCopyRequest& request);
OperationCall describe(const Aws::S3::Model::CompleteMultipartUploadRequest& request);
OperationCall describe(const Aws::S3::Model::AbortMultipartUploadRequest& request);

Aws::S3::Model::HeadObjectResult headObjectResult(Answer& answer);
Aws::S3::Model::HeadBucketResult headBucketResult(Answer& answer);
Aws::S3::Model::GetBucketLocationResult getBucketLocationResult(Answer& answer);
Aws::S3::Model::ListObjectsV2Result listObjectsV2Result(Answer& answer);
/// Takes the answer's body.
Aws::S3::Model::GetObjectResult getObjectResult(Answer& answer);
Aws::S3::Model::PutObjectResult putObjectResult(Answer& answer);
Aws::S3::Model::DeleteObjectResult deleteObjectResult(Answer& answer);
Aws::S3::Model::CreateMultipartUploadResult createMultipartUploadResult(Answer& answer);
Aws::S3::Model::UploadPartResult uploadPartResult(Answer& answer);
Aws::S3::Model::UploadPartCopyResult uploadPartCopyResult(Answer& answer);
Aws::S3::Model::CompleteMultipartUploadResult completeMultipartUploadResult(Answer& answer);
Aws::S3::Model::AbortMultipartUploadResult abortMultipartUploadResult(Answer& answer);

}  // namespace standin::aws::s3
