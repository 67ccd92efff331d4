#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace s3server {

struct Range {
    std::uint64_t first;
    std::uint64_t length;
};

/// The bytes that a Range header asks of a whole of `size` (RFC 9110, section 14). Nothing if the header is
/// to be ignored: not understood, or more than one range. Throws S3Error InvalidRange if no byte is there.
std::optional<Range> requestedRange(std::string_view header, std::uint64_t size);

/// The bytes that x-amz-copy-source-range names, which must all exist. Throws S3Error InvalidArgument.
Range copiedRange(std::string_view header, std::uint64_t size);

}  // namespace s3server
