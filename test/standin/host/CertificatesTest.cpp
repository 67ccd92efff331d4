#include "certificates/FirstExisting.hpp"

#include <gtest/gtest.h>
#include <foundation/certificates/certificates.hpp>

#include <filesystem>
#include <set>

#include "support/Environment.hpp"

namespace {

using foundation::certificates::firstExisting;

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

TEST(Certificates, OfTheSystemExist) {
    const std::string file = foundation::certificates::getSystemCertificatesFile();
    const std::string folder = foundation::certificates::getSystemCertificatesFolder();
    EXPECT_TRUE(file.empty() || std::filesystem::is_regular_file(file)) << file;
    EXPECT_TRUE(folder.empty() || std::filesystem::is_directory(folder)) << folder;
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
