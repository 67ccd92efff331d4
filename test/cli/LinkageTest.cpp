#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "support/process/Process.hpp"

using ::testing::HasSubstr;
using ::testing::Not;

namespace {

/// The names of what a program or library is made of, as its authors wrote them.
std::string symbolsOf(const std::string& file) {
    const auto listed = testsupport::run({NM_PROGRAM, "--demangle", file}, {},
                                         std::filesystem::temp_directory_path().string());
    EXPECT_EQ(listed.status, 0) << listed.err;
    return listed.out;
}

constexpr const char* plugIn = "storage::s3provider::";

TEST(Linkage, OfTheCommandsHoldsNothingOfThePlugIn) {
    const std::string commands = symbolsOf(COMMANDS_LIBRARY);
    EXPECT_THAT(commands, HasSubstr("s3vfs::addPutCommand"));
    EXPECT_THAT(commands, Not(HasSubstr(plugIn)));
}

TEST(Linkage, OfTheWayToTheBundleHoldsNothingOfThePlugIn) {
    const std::string framework = symbolsOf(FRAMEWORK_LIBRARY);
    EXPECT_THAT(framework, HasSubstr("s3vfs::ServiceFramework"));
    EXPECT_THAT(framework, Not(HasSubstr(plugIn)));
}

TEST(Linkage, OfTheDemoHoldsNothingOfThePlugIn) {
    const std::string demo = symbolsOf(DEMO_PROGRAM);
    EXPECT_THAT(demo, HasSubstr("s3vfs::ServiceFramework"));
    EXPECT_THAT(demo, Not(HasSubstr(plugIn)));
}

TEST(Linkage, OfTheToolHoldsItForExplain) {
    EXPECT_THAT(symbolsOf(S3VFS_PROGRAM), HasSubstr(plugIn));
}

}  // namespace
