#pragma once

#include <cstddef>
#include <string>

namespace s3server {

/// Unpredictable bytes for ids that are to be unique and opaque.
std::string randomBytes(std::size_t count);

}  // namespace s3server
