#pragma once

namespace Aws::S3::Model {

/// A multipart upload that was given up.
class AbortMultipartUploadResult {};

}  // namespace Aws::S3::Model
