#include "core/ProfileFile.hpp"

#include <algorithm>

#include "FuzzTarget.hpp"

using namespace fuzz;
using namespace standin::aws;

namespace {

void checkProfiles(std::string_view text, ProfileSections sections) {
    const auto profiles = parseProfiles(text, sections);
    const auto brackets = static_cast<std::size_t>(std::count(text.begin(), text.end(), '['));
    require(profiles.size() <= brackets, "a profile has a section");
    for (const auto& [name, profile] : profiles) {
        require(profile.GetName() == name && !name.empty(), "a profile has its name");
        require(text.find(name) != std::string_view::npos, "a name stands in the file");
        require(text.find(profile.GetRegion()) != std::string_view::npos, "a region stands in the file");
    }
}

}  // namespace

// The files in ~/.aws.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const auto sections : {ProfileSections::Named, ProfileSections::Prefixed})
        checkProfiles(textOf(data, size), sections);
    return 0;
}
