#pragma once

#include <cstdint>
#include <string>

namespace s3vfs {

/// Bytes from `first` to `last`, both included; first <= last.
struct ByteInterval {
    std::uint64_t first;
    std::uint64_t last;

    std::uint64_t length() const { return last - first + 1; }
};

/// Reads "FIRST-LAST". Throws UsageError.
ByteInterval parseByteInterval(const std::string& text);

}  // namespace s3vfs
