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

std::optional<std::uint64_t> contentLength(const Headers& headers) {
    const auto header = headers.find("content-length");
    if (header == headers.end()) return std::nullopt;
    const std::string& text = header->second;
    std::uint64_t length = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
    if (error != std::errc() || end != text.data() + text.size()) {
        throw UnsendableRequest("The content length is not a number");
    }
    return length;
}

}  // namespace standin::aws
