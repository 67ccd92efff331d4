#pragma once

#include <string>

namespace s3vfs {

/// A mask of levels from "all", or from numbers like "2,512" that are added up. Throws UsageError.
unsigned parseLogLevels(const std::string& text);

}  // namespace s3vfs
