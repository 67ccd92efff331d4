#include "ElfFile.hpp"

using namespace testsupport;

namespace {

// A symbol more, of a template's static variable for one, could also keep the library from being unloaded.
TEST(Exports, AreTheThreeEntryPoints) {
    EXPECT_THAT(exportedSymbols(BUNDLE_FILE),
                ::testing::UnorderedElementsAre("NewInstance_storage_s3provider_S3ProviderFactoryV2",
                                                "DeleteInstance_storage_s3provider_S3ProviderFactoryV2",
                                                "_us_set_bundle_context_instance_com_quorvex_s3provider"));
}

}  // namespace
