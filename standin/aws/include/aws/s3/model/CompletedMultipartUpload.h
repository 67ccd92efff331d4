#pragma once

#include <aws/core/utils/memory/stl/AWSVector.h>
#include <aws/s3/model/CompletedPart.h>

#include <utility>

namespace Aws::S3::Model {

/// The parts that become the object, in the order they are sent. S3 wants their numbers ascending.
class CompletedMultipartUpload {
public:
    const Aws::Vector<CompletedPart>& GetParts() const { return parts_; }
    bool PartsHasBeenSet() const { return partsHasBeenSet_; }
    void SetParts(Aws::Vector<CompletedPart> parts) {
        parts_ = std::move(parts);
        partsHasBeenSet_ = true;
    }
    void AddParts(CompletedPart part) {
        parts_.push_back(std::move(part));
        partsHasBeenSet_ = true;
    }

private:
    Aws::Vector<CompletedPart> parts_;
    bool partsHasBeenSet_ = false;
};

}  // namespace Aws::S3::Model
