#include "cppmicroservices/AnyMap.h"

#include "services/PropertyNames.hpp"

#include <algorithm>

namespace cppmicroservices {

bool AnyMap::Before::operator()(const std::string& left, const std::string& right) const {
    if (!foldsCase) return left < right;
    return std::lexicographical_compare(
        left.begin(), left.end(), right.begin(), right.end(),
        [](char l, char r) { return detail::lowered(l) < detail::lowered(r); });
}

}  // namespace cppmicroservices
