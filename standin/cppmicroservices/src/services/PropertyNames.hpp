#pragma once

#include <algorithm>
#include <string_view>

namespace cppmicroservices::detail {

inline char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether two texts differ in the case of ASCII letters at most.
inline bool equalIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char l, char r) { return lowered(l) == lowered(r); });
}

}  // namespace cppmicroservices::detail
