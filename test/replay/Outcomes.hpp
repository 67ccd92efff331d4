#pragma once

#include "replay/RecordedCase.hpp"

#include <aws/s3/S3ServiceClientModel.h>

namespace replay {

/// Each in the form of a case's `error` and `result`; a text that isn't UTF-8 stands in hexadecimal digits
/// under its name with `_hex` behind it.
Json describe(const Aws::S3::S3Error& error);

Json describe(const Aws::S3::Model::HeadBucketResult& result);
Json describe(const Aws::S3::Model::GetBucketLocationResult& result);
Json describe(const Aws::S3::Model::ListObjectsV2Result& result);
Json describe(const Aws::S3::Model::HeadObjectResult& result);
Json describe(const Aws::S3::Model::GetObjectResult& result);
Json describe(const Aws::S3::Model::PutObjectResult& result);
Json describe(const Aws::S3::Model::DeleteObjectResult& result);
Json describe(const Aws::S3::Model::CreateMultipartUploadResult& result);
Json describe(const Aws::S3::Model::UploadPartResult& result);
Json describe(const Aws::S3::Model::UploadPartCopyResult& result);
Json describe(const Aws::S3::Model::CompleteMultipartUploadResult& result);
Json describe(const Aws::S3::Model::AbortMultipartUploadResult& result);

}  // namespace replay
