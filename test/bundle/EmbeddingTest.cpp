#include <cppmicroservices/BundleResource.h>
#include <cppmicroservices/BundleResourceStream.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "ElfFile.hpp"
#include "support/process/StartedFramework.hpp"

using namespace testsupport;

namespace {

// The ways in which a bundle gets its resources: in a section of our own, and by the framework's functions.

std::string contentOf(std::istream& in) {
    return {std::istreambuf_iterator<char>(in), {}};
}

std::string manifestFile() {
    std::ifstream in(MANIFEST_FILE, std::ios::binary);
    return contentOf(in);
}

/// As the framework reads it out of the library.
std::string manifestIn(const std::string& library) {
    StartedFramework framework;
    cppmicroservices::BundleResourceStream in(framework.install(library).GetResource("manifest.json"),
                                              std::ios::binary);
    return contentOf(in);
}

TEST(Embedding, MakesTheSameSectionEitherWay) {
    const Section own = readSection(MANIFEST_ELF_SECTION, ".us_resources");
    const Section theirs = readSection(MANIFEST_LINKED_BY_FRAMEWORK, ".us_resources");
    ASSERT_FALSE(own.bytes.empty());
    EXPECT_EQ(own.bytes, theirs.bytes);
    EXPECT_TRUE(own.loaded);
    EXPECT_TRUE(theirs.loaded);
}

TEST(Embedding, OfTheBundleIsThatSection) {
    EXPECT_EQ(readSection(BUNDLE_FILE, ".us_resources").bytes,
              readSection(MANIFEST_ELF_SECTION, ".us_resources").bytes);
}

TEST(Embedding, LeavesStacksAsTheyAre) {
    EXPECT_FALSE(wantsExecutableStacks(MANIFEST_ELF_SECTION));
    EXPECT_FALSE(wantsExecutableStacks(MANIFEST_LINKED_BY_FRAMEWORK));
    EXPECT_FALSE(wantsExecutableStacks(MANIFEST_PACKED_BY_FRAMEWORK));
}

// The last is the way for other object formats. Its archive isn't ours; what is in it is.
TEST(Embedding, GivesTheFrameworkTheManifestByteForByte) {
    for (const char* const library :
         {MANIFEST_ELF_SECTION, MANIFEST_LINKED_BY_FRAMEWORK, MANIFEST_PACKED_BY_FRAMEWORK})
        EXPECT_EQ(manifestIn(library), manifestFile()) << library;
}

}  // namespace
