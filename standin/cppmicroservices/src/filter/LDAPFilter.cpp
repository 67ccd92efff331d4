#include "cppmicroservices/LDAPFilter.h"

#include "cppmicroservices/ServiceReferenceBase.h"
#include "filter/FilterSyntax.hpp"

#include <algorithm>
#include <functional>
#include <locale>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace cppmicroservices {

namespace {

using detail::FilterNode;
using Pieces = std::vector<std::string>;

/// Whether a property's value is what the pieces of a filter's value say: equal to the only one, or a text
/// with all of them in their order, the first at its beginning and the last at its end. A list needs one
/// value that is; an empty value never is.
bool valueMatches(const Any& value, const Pieces& pieces);

bool textMatches(std::string_view text, const Pieces& pieces) {
    if (pieces.size() == 1) return text == pieces[0];
    if (text.substr(0, pieces.front().size()) != pieces.front()) return false;
    std::size_t position = pieces.front().size();
    for (auto piece = pieces.begin() + 1; piece != pieces.end() - 1; ++piece) {
        const auto found = text.find(*piece, position);
        if (found == std::string_view::npos) return false;
        position = found + piece->size();
    }
    const std::string& last = pieces.back();
    return text.size() - position >= last.size() && text.substr(text.size() - last.size()) == last;
}

bool truthMatches(bool value, const Pieces& pieces) {
    return pieces.size() == 1 && detail::equalIgnoringCase(pieces[0], value ? "true" : "false");
}

template <class Number>
bool numberMatches(Number value, const Pieces& pieces) {
    std::stringstream text;
    text.imbue(std::locale::classic());
    if (pieces.size() > 1) {
        text << value;
        return textMatches(text.str(), pieces);
    }
    Number wanted{};
    text << pieces[0];
    return text >> std::noskipws >> wanted && text.peek() == std::stringstream::traits_type::eof() &&
           value == wanted;
}

template <class Value>
bool anyMatches(const std::vector<Value>& values, const Pieces& pieces) {
    return std::any_of(values.begin(), values.end(),
                       [&pieces](const Value& value) { return valueMatches(value, pieces); });
}

template <class Value>
bool matchesAs(const Value& value, const Pieces& pieces) {
    if constexpr (std::is_same_v<Value, std::string>)
        return textMatches(value, pieces);
    else if constexpr (std::is_same_v<Value, bool>)
        return truthMatches(value, pieces);
    else if constexpr (std::is_arithmetic_v<Value>)
        return numberMatches(value, pieces);
    else
        return anyMatches(value, pieces);
}

template <class... Types>
bool matchesAsOneOf(const Any& value, const Pieces& pieces) {
    const auto matches = [&pieces](const auto* held) { return held && matchesAs(*held, pieces); };
    return (matches(any_cast<Types>(&value)) || ...);
}

bool valueMatches(const Any& value, const Pieces& pieces) {
    return matchesAsOneOf<std::string, bool, int, unsigned, long, unsigned long, long long,
                          unsigned long long, double, std::vector<std::string>, std::vector<Any>>(value,
                                                                                                  pieces);
}

/// `lookUp` gives the value of a name, an empty one when there is none.
template <class LookUp>
bool matches(const FilterNode& node, const LookUp& lookUp) {
    const auto operandMatches = [&lookUp](const FilterNode& operand) { return matches(operand, lookUp); };
    switch (node.kind) {
        case FilterNode::Kind::And:
            return std::all_of(node.operands.begin(), node.operands.end(), operandMatches);
        case FilterNode::Kind::Or:
            return std::any_of(node.operands.begin(), node.operands.end(), operandMatches);
        case FilterNode::Kind::Not:
            return !operandMatches(node.operands.front());
        case FilterNode::Kind::Present:
            return !lookUp(node.attribute).Empty();
        case FilterNode::Kind::Value:
            return valueMatches(lookUp(node.attribute), node.pieces);
    }
    return false;
}

template <class SameName>
bool matchesMap(const FilterNode& root, const AnyMap& properties, const SameName& same) {
    return matches(root, [&](const std::string& name) {
        const auto property = std::find_if(properties.begin(), properties.end(),
                                           [&](const auto& each) { return same(each.first, name); });
        return property == properties.end() ? Any() : property->second;
    });
}

}  // namespace

LDAPFilter::LDAPFilter(const std::string& filter)
    : text_(filter), root_(std::make_shared<const FilterNode>(detail::parseFilter(filter))) {}

bool LDAPFilter::Match(const ServiceReferenceBase& service) const {
    return root_ &&
           matches(*root_, [&service](const std::string& name) { return service.GetProperty(name); });
}

bool LDAPFilter::Match(const AnyMap& properties) const {
    return root_ && matchesMap(*root_, properties, detail::equalIgnoringCase);
}

bool LDAPFilter::MatchCase(const AnyMap& properties) const {
    return root_ && matchesMap(*root_, properties, std::equal_to<std::string_view>());
}

}  // namespace cppmicroservices
