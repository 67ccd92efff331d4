#include <gmock/gmock.h>

#include "Commands.hpp"
#include "support/process/TemporaryFolder.hpp"

using namespace testsupport;
using ::testing::HasSubstr;

namespace fs = std::filesystem;

namespace {

// A host that has nothing to do with the tree: the stand-in's package, installed on its own.
TEST(SystemHost, BuildsThePlugInAgainstItsOwnPackage) {
    const TemporaryFolder folder;
    const auto host = folder.path() / "host";
    cmake({"--install", BUILD_FOLDER, "--component", "host", "--prefix", host});

    const auto build = folder.path() / "build";
    const auto plugIn = folder.path() / "plug-in";
    cmake({"-S", SOURCE_FOLDER, "-B", build, "-G", "Ninja", "-DS3PROVIDER_HOST=system",
           "-DS3PROVIDER_AWS_SDK=" USED_AWS_SDK, "-DS3PROVIDER_CPPMICROSERVICES=" USED_CPPMICROSERVICES,
           "-DS3PROVIDER_BUILD_TESTS=OFF", "-DCMAKE_CXX_COMPILER=" COMPILER,
           "-DCMAKE_CXX_COMPILER_LAUNCHER=" COMPILER_LAUNCHER},
          lookingIn(host.string()));
    cmake({"--build", build, "--target", "s3provider_bundle"});
    cmake({"--install", build, "--component", "bundle", "--prefix", plugIn});

    EXPECT_FALSE(fs::exists(plugIn / "include/s3provider/host"));
    const auto library = plugIn / LIBRARIES / "libcom_quorvex_s3provider.so";
    EXPECT_THAT(output({"/usr/bin/ldd", library}, toolEnvironment()),
                HasSubstr("=> " + (host / LIBRARIES / "libs3provider_host.so").string()));
    const auto consumer = buildConsumer(folder.path() / "consumer", plugIn.string() + ":" + host.string());
    const Shelf shelf;
    EXPECT_EQ(output({consumer, "s3://shelf"}, shelf.environment()), "apple\npear\n");
}

}  // namespace
