#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "support/process/Process.hpp"
#include "support/process/TemporaryFolder.hpp"

namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

/// The program alone in a folder "bin".
class InstalledProgram : public ::testing::Test {
protected:
    InstalledProgram() {
        fs::create_directory(place.path() / "bin");
        fs::copy(S3VFS_PROGRAM, place.path() / "bin");
    }

    testsupport::Finished run(const std::vector<std::string>& options = {}) const {
        std::vector<std::string> command = {place.path() / "bin" / "s3vfs", "bundle"};
        command.insert(command.end(), options.begin(), options.end());
        return testsupport::run(command, {}, place.path().string());
    }

    const testsupport::TemporaryFolder place;
    const fs::path bundle = place.path() / INSTALLED_BUNDLE_FOLDER / fs::path(BUNDLE_FILE).filename();
};

TEST_F(InstalledProgram, FindsTheBundleWhereLibrariesAreInstalled) {
    fs::create_directories(bundle.parent_path());
    fs::copy(BUNDLE_FILE, bundle);
    const auto finished = run();
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_THAT(finished.out, HasSubstr("file       " + bundle.string() + "\n"));
}

TEST_F(InstalledProgram, TakesTheBundleThatIsNamedThoughNoneIsInItsPlace) {
    const auto finished = run({"--bundle", BUNDLE_FILE});
    EXPECT_EQ(finished.status, 0) << finished.err;
    EXPECT_THAT(finished.out, HasSubstr("file       " + std::string(BUNDLE_FILE) + "\n"));
}

TEST_F(InstalledProgram, TellsWhereItLookedForTheBundleThatIsMissing) {
    const auto finished = run();
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.err, HasSubstr("the plug-in's bundle is missing; there is no " + bundle.string()));
    EXPECT_THAT(finished.err, HasSubstr("--bundle"));
    EXPECT_EQ(finished.out, "");
}

}  // namespace
