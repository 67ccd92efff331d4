#include "conformance/targets/Quirk.hpp"

#include <sstream>
#include <stdexcept>

namespace testsupport {

namespace {

constexpr struct {
    const char* name;
    Quirk quirk;
} quirkNames[] = {
    {"decodes-copy-sources-twice", Quirk::DecodesCopySourcesTwice},
    {"sorts-parts-of-completions", Quirk::SortsPartsOfCompletions},
    {"leaves-locations-empty", Quirk::LeavesLocationsEmpty},
};

Quirk quirkNamed(const std::string& wanted) {
    for (const auto& [name, quirk] : quirkNames) {
        if (wanted == name) return quirk;
    }
    throw std::invalid_argument("'" + wanted + "' is no known quirk");
}

}  // namespace

Quirks parseQuirks(const std::string& names) {
    Quirks quirks;
    std::istringstream in(names);
    for (std::string name; std::getline(in, name, ',');)
        quirks.insert(quirkNamed(name));
    return quirks;
}

}  // namespace testsupport
