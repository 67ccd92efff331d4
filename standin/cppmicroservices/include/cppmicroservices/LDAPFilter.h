#pragma once

#include "cppmicroservices/AnyMap.h"

#include <memory>
#include <string>

namespace cppmicroservices {

class ServiceReferenceBase;

namespace detail {
struct FilterNode;
}

/// A search filter in the text form of RFC 4515, <https://www.rfc-editor.org/rfc/rfc4515>: equality,
/// presence, substrings, and, or, not. Immutable; any thread may use it.
///
/// Values are texts, compared with regard to case; booleans, "true" and "false" in any case; and integers. A
/// list matches when one of its values does.
class LDAPFilter {
public:
    /// No filter: matches nothing, and is false.
    LDAPFilter() = default;

    /// Throws std::invalid_argument, which tells what is wrong and where.
    LDAPFilter(const std::string& filter);

    explicit operator bool() const { return root_ != nullptr; }

    /// The names of properties match in any case.
    bool Match(const ServiceReferenceBase& service) const;
    bool Match(const AnyMap& properties) const;

    /// The names of properties match in their own case only.
    bool MatchCase(const AnyMap& properties) const;

    /// The text it was made of.
    std::string ToString() const { return text_; }

private:
    std::string text_;
    std::shared_ptr<const detail::FilterNode> root_;
};

}  // namespace cppmicroservices
