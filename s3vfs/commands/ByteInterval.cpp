#include "commands/ByteInterval.hpp"

#include <charconv>

#include "messages/Text.hpp"
#include "messages/UsageError.hpp"

namespace s3vfs {

ByteInterval parseByteInterval(const std::string& text) {
    ByteInterval range{};
    const char* const end = text.data() + text.size();
    const auto first = std::from_chars(text.data(), end, range.first);
    const bool dash = first.ec == std::errc() && first.ptr != end && *first.ptr == '-';
    const auto last = dash ? std::from_chars(first.ptr + 1, end, range.last) : first;
    if (!dash || last.ec != std::errc() || last.ptr != end || range.first > range.last) {
        throw UsageError("'" + printable(text) + "' is no range: write --range FIRST-LAST, for example 0-99");
    }
    return range;
}

}  // namespace s3vfs
