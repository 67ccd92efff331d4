#pragma once

#include <aws/core/utils/Outcome.h>
#include <aws/s3/S3ClientConfiguration.h>
#include <aws/s3/S3EndpointProvider.h>
#include <aws/s3/S3Errors.h>
#include <aws/s3/model/AbortMultipartUploadResult.h>
#include <aws/s3/model/CompleteMultipartUploadResult.h>
#include <aws/s3/model/CreateMultipartUploadResult.h>
#include <aws/s3/model/DeleteObjectResult.h>
#include <aws/s3/model/GetBucketLocationResult.h>
#include <aws/s3/model/GetObjectResult.h>
#include <aws/s3/model/HeadBucketResult.h>
#include <aws/s3/model/HeadObjectResult.h>
#include <aws/s3/model/ListObjectsV2Result.h>
#include <aws/s3/model/PutObjectResult.h>
#include <aws/s3/model/UploadPartCopyResult.h>
#include <aws/s3/model/UploadPartResult.h>

namespace Aws::S3 {

using S3EndpointProviderBase = Endpoint::S3EndpointProviderBase;
using S3EndpointProvider = Endpoint::S3EndpointProvider;

namespace Model {

class AbortMultipartUploadRequest;
class CompleteMultipartUploadRequest;
class CreateMultipartUploadRequest;
class DeleteObjectRequest;
class GetBucketLocationRequest;
class GetObjectRequest;
class HeadBucketRequest;
class HeadObjectRequest;
class ListObjectsV2Request;
class PutObjectRequest;
class UploadPartCopyRequest;
class UploadPartRequest;

using AbortMultipartUploadOutcome = Aws::Utils::Outcome<AbortMultipartUploadResult, S3Error>;
using CompleteMultipartUploadOutcome = Aws::Utils::Outcome<CompleteMultipartUploadResult, S3Error>;
using CreateMultipartUploadOutcome = Aws::Utils::Outcome<CreateMultipartUploadResult, S3Error>;
using DeleteObjectOutcome = Aws::Utils::Outcome<DeleteObjectResult, S3Error>;
using GetBucketLocationOutcome = Aws::Utils::Outcome<GetBucketLocationResult, S3Error>;
using GetObjectOutcome = Aws::Utils::Outcome<GetObjectResult, S3Error>;
using HeadBucketOutcome = Aws::Utils::Outcome<HeadBucketResult, S3Error>;
using HeadObjectOutcome = Aws::Utils::Outcome<HeadObjectResult, S3Error>;
using ListObjectsV2Outcome = Aws::Utils::Outcome<ListObjectsV2Result, S3Error>;
using PutObjectOutcome = Aws::Utils::Outcome<PutObjectResult, S3Error>;
using UploadPartCopyOutcome = Aws::Utils::Outcome<UploadPartCopyResult, S3Error>;
using UploadPartOutcome = Aws::Utils::Outcome<UploadPartResult, S3Error>;

}  // namespace Model

}  // namespace Aws::S3
