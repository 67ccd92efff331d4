#pragma once

#include "s3server/Headers.hpp"
#include "store/Bytes.hpp"

namespace s3server {

/// Compares the body with every x-amz-checksum-* of the headers given, and with content-md5. Throws S3Error
/// if one is malformed, differs, or is of a kind that isn't known. `md5` is the body's, raw.
void checkChecksums(const Headers& headers, const Bytes& body, const std::string& md5);

}  // namespace s3server
