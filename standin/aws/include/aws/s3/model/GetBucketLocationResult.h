#pragma once

#include <aws/s3/model/BucketLocationConstraint.h>

namespace Aws::S3::Model {

/// The region a bucket was made in.
class GetBucketLocationResult {
public:
    /// NOT_SET is us-east-1.
    BucketLocationConstraint GetLocationConstraint() const { return locationConstraint_; }
    void SetLocationConstraint(BucketLocationConstraint locationConstraint) {
        locationConstraint_ = locationConstraint;
    }

private:
    BucketLocationConstraint locationConstraint_ = BucketLocationConstraint::NOT_SET;
};

}  // namespace Aws::S3::Model
