#pragma once

#include <string>

namespace s3vfs {

/// A mask of levels from "all", or from numbers like "2,512" that are added up. Throws UsageError.
unsigned parseLogLevels(const std::string& text);

/// Enables the levels, a mask, on every channel of the S3 provider.
void enableLogLevels(unsigned levels);

}  // namespace s3vfs
