#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>

#include <utility>

namespace Aws::S3::Model {

/// A bucket that exists.
class HeadBucketResult {
public:
    /// Empty when the answer did not say.
    const Aws::String& GetBucketRegion() const { return bucketRegion_; }
    void SetBucketRegion(Aws::String bucketRegion) { bucketRegion_ = std::move(bucketRegion); }

private:
    Aws::String bucketRegion_;
};

}  // namespace Aws::S3::Model
