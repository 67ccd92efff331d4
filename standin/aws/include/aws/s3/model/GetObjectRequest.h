#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>
#include <aws/s3/S3Request.h>
#include <aws/s3/model/Addressing.h>
#include <aws/s3/model/Field.h>

#include <utility>

namespace Aws::S3::Model {

/// Asks for an object's bytes.
class GetObjectRequest : public ObjectRequest<S3Request> {
public:
    const char* GetServiceRequestName() const override { return "GetObject"; }

    /// Such as "bytes=0-9"; the whole object when not set.
    const Aws::String& GetRange() const { return range_.get(); }
    bool RangeHasBeenSet() const { return range_.isSet(); }
    void SetRange(Aws::String range) { range_.set(std::move(range)); }

private:
    Field<Aws::String> range_;
};

}  // namespace Aws::S3::Model
