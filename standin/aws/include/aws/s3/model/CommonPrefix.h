#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>

#include <utility>

namespace Aws::S3::Model {

/// The keys of a listing that share a prefix up to the delimiter.
class CommonPrefix {
public:
    const Aws::String& GetPrefix() const { return prefix_; }
    void SetPrefix(Aws::String prefix) { prefix_ = std::move(prefix); }

private:
    Aws::String prefix_;
};

}  // namespace Aws::S3::Model
