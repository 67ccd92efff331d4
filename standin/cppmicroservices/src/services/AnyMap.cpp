#include "cppmicroservices/AnyMap.h"

#include <algorithm>

namespace cppmicroservices {

namespace {

char lowered(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

bool detail::equalIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char l, char r) { return lowered(l) == lowered(r); });
}

bool AnyMap::Before::operator()(const std::string& left, const std::string& right) const {
    if (!foldsCase) return left < right;
    return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(),
                                        [](char l, char r) { return lowered(l) < lowered(r); });
}

}  // namespace cppmicroservices
