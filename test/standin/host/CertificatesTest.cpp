#include "certificates/FirstExisting.hpp"
#include "certificates/HashedFolder.hpp"

#include <gtest/gtest.h>
#include <foundation/certificates/certificates.hpp>

#include <filesystem>
#include <fstream>
#include <set>

#include "support/process/Environment.hpp"
#include "support/process/TemporaryFolder.hpp"

namespace {

using foundation::certificates::firstExisting;
using foundation::certificates::isHashedFolder;

constexpr std::string_view candidates[] = {"/debian", "/fedora", "/suse"};

std::string firstOf(const std::set<std::string_view>& existing) {
    return firstExisting(candidates, [&](std::string_view path) { return existing.count(path) != 0; });
}

TEST(Certificates, AreTheFirstCandidateThatExists) {
    EXPECT_EQ(firstOf({"/debian", "/fedora", "/suse"}), "/debian");
    EXPECT_EQ(firstOf({"/suse", "/fedora"}), "/fedora");
    EXPECT_EQ(firstOf({"/suse"}), "/suse");
}

TEST(Certificates, AreNowhereWhenNoCandidateExists) {
    EXPECT_EQ(firstOf({}), "");
    EXPECT_EQ(firstOf({"/elsewhere"}), "");
}

TEST(Certificates, AreFoundInAFolderByTheHashesOfTheirSubjects) {
    const testsupport::TemporaryFolder folder;
    const auto addFile = [&](const char* name) { std::ofstream(folder.path() / name) << "certificate"; };
    EXPECT_FALSE(isHashedFolder(folder.path().native()));
    for (const char* const name : {"ca-bundle.crt", "002c0b4f", "002c0b4f.", "002c0b4.0", "002c0b4f0.0",
                                   "002c0b4f.pem", "002c0b4f.r0", "002c0b4g.0", "002c0b4f-0"})
        addFile(name);
    EXPECT_FALSE(isHashedFolder(folder.path().native()));
    addFile("002c0b4f.0");
    EXPECT_TRUE(isHashedFolder(folder.path().native()));
}

TEST(Certificates, ArentFoundInWhatIsNoFolder) {
    EXPECT_FALSE(isHashedFolder("/etc/passwd"));
    EXPECT_FALSE(isHashedFolder("/nowhere"));
    EXPECT_FALSE(isHashedFolder(""));
}

TEST(Certificates, OfTheSystemExist) {
    const std::string file = foundation::certificates::getSystemCertificatesFile();
    const std::string folder = foundation::certificates::getSystemCertificatesFolder();
    EXPECT_TRUE(file.empty() || std::filesystem::is_regular_file(file)) << file;
    EXPECT_TRUE(folder.empty() || isHashedFolder(folder)) << folder;
}

TEST(Certificates, OfTheSystemDoNotDependOnTheEnvironment) {
    using namespace foundation::certificates;
    const std::string file = getSystemCertificatesFile();
    const std::string folder = getSystemCertificatesFolder();
    const testsupport::Environment environment{{"ZR_ROOT_CERT_FILE", "/other"},
                                               {"ZR_ROOT_CERT_PATH", "/other"}};
    EXPECT_EQ(getSystemCertificatesFile(), file);
    EXPECT_EQ(getSystemCertificatesFolder(), folder);
}

}  // namespace
