#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

#include "Commands.hpp"
#include "support/process/TemporaryFolder.hpp"

using namespace testsupport;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

namespace fs = std::filesystem;

namespace {

/// What `make install` leaves, with DESTDIR, and so not where its prefix says.
class Installation : public ::testing::Test {
protected:
    Installation() {
        cmake({"--install", BUILD_FOLDER, "--prefix", "/opt/shop"}, {{"DESTDIR", folder.path()}});
    }

    std::string pkgConfig(const std::string& wanted) const {
        auto environment = toolEnvironment();
        environment["PKG_CONFIG_PATH"] = prefix / LIBRARIES / "pkgconfig";
        auto printed = output({PKG_CONFIG_PROGRAM, wanted, "s3provider"}, environment);
        printed.erase(printed.find_last_not_of(" \n") + 1);
        return printed;
    }

    const TemporaryFolder folder;
    const fs::path prefix = folder.path() / "opt/shop";
    const Shelf shelf;
};

/// A text file's content; a program's or library's dynamic section.
std::string readable(const fs::path& file) {
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    const auto bytes = content.str();
    return bytes.rfind("\177ELF", 0) == 0 ? output({READELF_PROGRAM, "-d", file}, toolEnvironment()) : bytes;
}

TEST_F(Installation, IsFoundByAConsumerThatLoadsTheBundleAndListsABucket) {
    const auto consumer = buildConsumer(folder.path() / "consumer", prefix);
    EXPECT_EQ(output({consumer, "s3://shelf"}, shelf.environment()), "apple\npear\n");
}

TEST_F(Installation, IsFoundByPkgConfig) {
    if (!ONLY_STANDINS) GTEST_SKIP() << "pkg-config tells of the stand-ins only";
    const auto consumer = folder.path() / "consumer";
    const auto libraries = pkgConfig("--variable=libdir");
    output({"/bin/sh", "-c",
            COMPILER " -std=c++17 -DBUNDLES='\"" + pkgConfig("--variable=bundle") +
                "\"' " CONSUMER_PROJECT "/main.cpp -o " + consumer.string() + " " + pkgConfig("--cflags") +
                " " + pkgConfig("--libs") + " -Wl,-rpath," + libraries},
           toolEnvironment());
    EXPECT_EQ(output({consumer, "s3://shelf"}, shelf.environment()), "apple\npear\n");
}

TEST_F(Installation, HoldsToolsThatRun) {
    const auto listing = output({prefix / "bin/s3vfs", "ls", "s3://shelf/"}, shelf.environment());
    EXPECT_THAT(listing, AllOf(HasSubstr("apple"), HasSubstr("pear")));
    EXPECT_THAT(output({prefix / "bin/s3server", "--help"}, {}), HasSubstr("--bucket"));
}

TEST_F(Installation, NamesNeitherTheSourcesNorTheBuild) {
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(prefix)) {
        if (!entry.is_regular_file()) continue;
        EXPECT_THAT(readable(entry), AllOf(Not(HasSubstr(SOURCE_FOLDER)), Not(HasSubstr(BUILD_FOLDER))))
            << entry.path();
        ++files;
    }
    EXPECT_GT(files, 8);
}

}  // namespace
