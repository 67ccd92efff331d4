#pragma once

#include <istream>
#include <memory>

namespace storage::s3provider {

/// The caller's stream buffer as the SDK takes request bodies: nothing is copied, and whatever the SDK does
/// to the position is seen by the caller. The buffer must outlive the request.
inline std::shared_ptr<std::iostream> bodyOver(std::istream& in) {
    return std::make_shared<std::iostream>(in.rdbuf());
}

}  // namespace storage::s3provider
