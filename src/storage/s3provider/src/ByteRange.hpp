#pragma once

#include <cstdint>
#include <string>

namespace storage::s3provider {

/// The bytes from `first` to `last`, both included, as an HTTP Range value: "bytes=100-199".
inline std::string byteRange(std::uint64_t first, std::uint64_t last) {
    return "bytes=" + std::to_string(first) + "-" + std::to_string(last);
}

}  // namespace storage::s3provider
