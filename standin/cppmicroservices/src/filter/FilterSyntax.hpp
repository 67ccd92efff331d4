#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace cppmicroservices::detail {

/// One filter of a filter's tree.
struct FilterNode {
    enum class Kind { And, Or, Not, Present, Value };

    Kind kind;
    std::vector<FilterNode> operands;  // of And, Or and Not
    std::string attribute;             // of Present and Value
    // Of Value: what stands before, between and behind the asterisks; without any, the one value to equal.
    std::vector<std::string> pieces;
};

/// Reads a filter. Throws std::invalid_argument, which tells what is wrong and where; also when more than 64
/// filters lie in each other.
FilterNode parseFilter(std::string_view text);

}  // namespace cppmicroservices::detail
