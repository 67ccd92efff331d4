#include "core/Text.hpp"

#include <algorithm>

namespace standin::aws {

std::string_view trimmed(std::string_view text, std::string_view unwanted) {
    const auto first = text.find_first_not_of(unwanted);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(unwanted) - first + 1);
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

}  // namespace standin::aws
