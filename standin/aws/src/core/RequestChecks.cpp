#include "core/RequestChecks.hpp"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "core/UnsendableRequest.hpp"

namespace standin::aws {
namespace {

constexpr bool isAuthorityCharacter(char c) {
    const bool alphanumeric = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
    return alphanumeric || std::string_view("-._:[]").find(c) != std::string_view::npos;
}

constexpr bool isControlCharacter(unsigned char c) {
    return (c < 0x20 && c != '\t') || c == 0x7f;
}

std::optional<std::uint64_t> wholeNumber(std::string_view text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

}  // namespace

bool isAuthority(const std::string& text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isAuthorityCharacter);
}

bool isHeaderValue(const std::string& text) {
    return std::none_of(text.begin(), text.end(), isControlCharacter);
}

void checkHeaders(const Headers& headers) {
    for (const auto& [name, value] : headers) {
        if (!isHeaderValue(value)) {
            throw UnsendableRequest("The value of the header " + name + " holds a control character");
        }
    }
}

std::optional<std::uint64_t> rangeLength(const Headers& headers) {
    constexpr std::string_view unit = "bytes=";
    const auto header = headers.find("range");
    if (header == headers.end() || header->second.rfind(unit, 0) != 0) return std::nullopt;
    const std::string_view range = std::string_view(header->second).substr(unit.size());
    const auto hyphen = range.find('-');
    if (hyphen == std::string_view::npos) return std::nullopt;
    const auto last = wholeNumber(range.substr(hyphen + 1));
    if (hyphen == 0) return last;
    const auto first = wholeNumber(range.substr(0, hyphen));
    if (!first || !last || *last < *first) return std::nullopt;
    const std::uint64_t count = *last - *first + 1;
    return count > 0 ? std::optional(count) : std::nullopt;
}

std::optional<std::uint64_t> contentLength(const Headers& headers) {
    const auto header = headers.find("content-length");
    if (header == headers.end()) return std::nullopt;
    const auto length = wholeNumber(header->second);
    if (!length) throw UnsendableRequest("The content length is not a number");
    return length;
}

}  // namespace standin::aws
