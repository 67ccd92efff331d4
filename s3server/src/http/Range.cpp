#include "http/Range.hpp"

#include <algorithm>
#include <limits>
#include <string>

#include "operations/S3Error.hpp"
#include "text/Text.hpp"

namespace s3server {
namespace {

constexpr std::string_view unit = "bytes=";

/// A number too large to be one stands for a place behind every end.
std::optional<std::uint64_t> parsePlace(std::string_view text) {
    if (text.empty() || text.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
    return parseNumber(text).value_or(std::numeric_limits<std::uint64_t>::max());
}

S3Error unsatisfiable(std::string_view header, std::uint64_t size) {
    return S3Error("InvalidRange")
        .with("RangeRequested", std::string(header))
        .with("ActualObjectSize", std::to_string(size));
}

}  // namespace

std::optional<Range> requestedRange(std::string_view header, std::uint64_t size) {
    if (!startsWith(header, unit)) return std::nullopt;
    const auto text = header.substr(unit.size());
    if (text.find('-') == std::string_view::npos) return std::nullopt;
    const auto [firstText, lastText] = splitAtFirst(text, '-');
    const auto first = parsePlace(firstText);
    const auto last = parsePlace(lastText);

    if (firstText.empty()) {
        if (!last) return std::nullopt;
        if (*last == 0 || size == 0) throw unsatisfiable(header, size);
        const auto length = std::min(*last, size);
        return Range{size - length, length};
    }
    if (!first || (!last && !lastText.empty()) || (last && *last < *first)) return std::nullopt;
    if (*first >= size) throw unsatisfiable(header, size);
    return Range{*first, std::min(last.value_or(size - 1), size - 1) - *first + 1};
}

Range copiedRange(std::string_view header, std::uint64_t size) {
    const auto text = startsWith(header, unit) ? header.substr(unit.size()) : std::string_view();
    const auto [firstText, lastText] = splitAtFirst(text, '-');
    const auto first = parsePlace(firstText);
    const auto last = parsePlace(lastText);
    if (!first || !last || *last < *first) {
        throw S3Error("InvalidArgument")
            .saying(
                "The x-amz-copy-source-range value must be of the form bytes=first-last where first and "
                "last are the zero-based offsets of the first and last bytes to copy")
            .with("ArgumentName", "x-amz-copy-source-range")
            .with("ArgumentValue", std::string(header));
    }
    if (*last >= size) {
        throw S3Error("InvalidArgument")
            .saying("Range specified is not valid for source object of size: " + std::to_string(size))
            .with("ArgumentName", "x-amz-copy-source-range")
            .with("ArgumentValue", std::string(header));
    }
    return {*first, *last - *first + 1};
}

}  // namespace s3server
