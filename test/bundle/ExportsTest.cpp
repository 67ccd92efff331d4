#include <gmock/gmock.h>

#include <algorithm>
#include <regex>

#include "ElfFile.hpp"

using namespace testsupport;
using ::testing::UnorderedElementsAre;

namespace {

/// Those of C, and those that the project's own names, mangled, are in. Instances of the standard library's
/// templates are that library's, whatever they are made of.
std::vector<std::string> ownNames(std::vector<std::string> names) {
    static const std::regex ofStandardLibrary("_Z(T.)?(N?K?)St.*");
    const auto isOthers = [](const std::string& name) {
        if (name.rfind("_Z", 0) != 0) return false;
        return std::regex_match(name, ofStandardLibrary) ||
               (name.find("s3provider") == std::string::npos && name.find("7storage") == std::string::npos &&
                name.find("10foundation") == std::string::npos);
    };
    names.erase(std::remove_if(names.begin(), names.end(), isOthers), names.end());
    return names;
}

// A symbol more, of a template's static variable for one, could also keep the library from being unloaded.
TEST(Exports, AreTheThreeEntryPoints) {
    EXPECT_THAT(exportedSymbols(BUNDLE_FILE),
                UnorderedElementsAre("NewInstance_storage_s3provider_S3ProviderFactoryV2",
                                     "DeleteInstance_storage_s3provider_S3ProviderFactoryV2",
                                     "_us_set_bundle_context_instance_com_quorvex_s3provider"));
}

// Only instances of other libraries' templates are seen beside them then.
TEST(Exports, AreTheSameOfOurOwnWhereNoVersionScriptHidesTheRest) {
    EXPECT_THAT(ownNames(exportedSymbols(BUNDLE_WITHOUT_VERSION_SCRIPT)),
                UnorderedElementsAre("NewInstance_storage_s3provider_S3ProviderFactoryV2",
                                     "DeleteInstance_storage_s3provider_S3ProviderFactoryV2",
                                     "_us_set_bundle_context_instance_com_quorvex_s3provider"));
}

}  // namespace
