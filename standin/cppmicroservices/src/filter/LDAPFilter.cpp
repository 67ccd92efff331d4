#include "cppmicroservices/LDAPFilter.h"

#include "cppmicroservices/ServiceReferenceBase.h"
#include "filter/FilterSyntax.hpp"
#include "filter/ValueMatch.hpp"
#include "services/PropertyNames.hpp"

#include <algorithm>
#include <functional>
#include <string_view>

namespace cppmicroservices {

namespace {

using detail::FilterNode;

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
            return detail::valueMatches(lookUp(node.attribute), node.pieces);
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
