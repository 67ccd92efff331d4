#include <cppmicroservices/AnyMap.h>
#include <cppmicroservices/LDAPFilter.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "FuzzTarget.hpp"

using namespace cppmicroservices;

namespace {

const AnyMap& properties() {
    static const AnyMap map = [] {
        AnyMap made(AnyMap::UNORDERED_MAP);
        made["a"] = std::string("b");
        made["Name"] = std::string("aws-sdk-cpp");
        made["odd"] = std::string("a*b(c)\\");
        made["n"] = 5;
        made["r"] = 1.5;
        made["on"] = true;
        made["list"] = std::vector<std::string>{"x", "y"};
        return made;
    }();
    return map;
}

/// Nothing when the text is refused.
std::optional<bool> matches(const std::string& filter) {
    try {
        return LDAPFilter(filter).Match(properties());
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

}  // namespace

// A target of a bundle's manifest.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string filter(fuzz::textOf(data, size));
    const auto plain = matches(filter);
    // A filter too deep to lie in another is refused there.
    const auto negated = matches("(!" + filter + ")");
    const auto both = matches("(&" + filter + filter + ")");
    const auto either = matches("(|(!(a=b))" + filter + ")");
    fuzz::require(!negated || plain, "what is refused is refused within another");
    fuzz::require(!negated || *negated != *plain, "not is the opposite");
    fuzz::require(!both || !plain || *both == *plain, "twice is once");
    fuzz::require(!either || !plain || *either == *plain, "what is false adds nothing");
    return 0;
}
