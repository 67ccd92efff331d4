#include "text/Text.hpp"

#include <algorithm>
#include <charconv>

namespace s3server {

std::string lowered(std::string_view text) {
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return result;
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool startsWith(std::string_view text, std::string_view start) {
    return text.substr(0, start.size()) == start;
}

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    for (;;) {
        const auto at = text.find(separator);
        pieces.push_back(text.substr(0, at));
        if (at == std::string_view::npos) return pieces;
        text.remove_prefix(at + 1);
    }
}

std::pair<std::string_view, std::string_view> splitAtFirst(std::string_view text, char separator) {
    const auto at = text.find(separator);
    if (at == std::string_view::npos) return {text, {}};
    return {text.substr(0, at), text.substr(at + 1)};
}

std::optional<std::uint64_t> parseNumber(std::string_view text) {
    std::uint64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc{} || stop != end) return std::nullopt;
    return number;
}

const std::string* findHeader(const Headers& headers, std::string_view name) {
    const auto found = std::find_if(headers.begin(), headers.end(),
                                    [name](const auto& header) { return header.first == name; });
    return found == headers.end() ? nullptr : &found->second;
}

std::string_view headerText(const Headers& headers, std::string_view name) {
    const std::string* const value = findHeader(headers, name);
    return value ? std::string_view(*value) : std::string_view();
}

}  // namespace s3server
