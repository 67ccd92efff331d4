#pragma once

#include "cppmicroservices/Any.h"

#include <string>
#include <vector>

namespace cppmicroservices::detail {

/// Whether a property's value is what the pieces of a filter's value say: equal to the only one, or a text
/// with all of them in their order, the first at its beginning and the last at its end. A list needs one
/// value that is; an empty value never is.
bool valueMatches(const Any& value, const std::vector<std::string>& pieces);

}  // namespace cppmicroservices::detail
