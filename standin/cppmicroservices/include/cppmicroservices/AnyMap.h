#pragma once

#include "cppmicroservices/Any.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace cppmicroservices {

namespace detail {

/// Whether two texts differ in the case of ASCII letters at most.
bool equalIgnoringCase(std::string_view left, std::string_view right);

}  // namespace detail

/// Values by name, the names with or without regard to the case of ASCII letters.
class AnyMap {
    struct Before {
        bool foldsCase;
        bool operator()(const std::string& left, const std::string& right) const;
    };
    using Values = std::map<std::string, Any, Before>;

public:
    enum map_type { ORDERED_MAP, UNORDERED_MAP, UNORDERED_MAP_CASEINSENSITIVE_KEYS };

    explicit AnyMap(map_type type) : values_(Before{type == UNORDERED_MAP_CASEINSENSITIVE_KEYS}) {}

    Any& operator[](const std::string& name) { return values_[name]; }

    /// Throws std::out_of_range when there is none.
    const Any& at(const std::string& name) const { return values_.at(name); }

    std::size_t count(const std::string& name) const { return values_.count(name); }
    std::size_t size() const { return values_.size(); }
    bool empty() const { return values_.empty(); }

    Values::const_iterator find(const std::string& name) const { return values_.find(name); }
    Values::const_iterator begin() const { return values_.begin(); }
    Values::const_iterator end() const { return values_.end(); }

private:
    Values values_;
};

}  // namespace cppmicroservices
