#include "Commands.hpp"
#include "support/process/TemporaryFolder.hpp"

using namespace testsupport;

namespace {

constexpr auto versionFile = R"(
set(PACKAGE_VERSION 1.11.999)
set(PACKAGE_VERSION_COMPATIBLE TRUE)
)";

// The stand-in's library, in the folder of this file, as a package whose target wants more of the compiler
// than this project does.
constexpr auto configurationFile = R"(
add_library(another_sdk SHARED IMPORTED)
set_target_properties(another_sdk PROPERTIES
  IMPORTED_LOCATION "${CMAKE_CURRENT_LIST_DIR}/)" LIBRARIES R"(/libaws_sdk_standin.so"
  INTERFACE_COMPILE_OPTIONS -fPIC
  INTERFACE_COMPILE_DEFINITIONS _GLIBCXX_ASSERTIONS
  INTERFACE_COMPILE_FEATURES cxx_std_20)
set(AWSSDK_LINK_LIBRARIES another_sdk)
set(AWSSDK_INCLUDE_DIRS "${CMAKE_CURRENT_LIST_DIR}/include/s3provider/aws_sdk")
)";

// A test program that links the SDK and one that doesn't share their precompiled headers.
TEST(AnotherSdk, BuildsTestProgramsWithTheOptionsOfItsTarget) {
    const TemporaryFolder sdk;
    cmake({"--install", BUILD_FOLDER, "--prefix", sdk.path()});
    sdk.write("AWSSDKConfigVersion.cmake", versionFile);
    sdk.write("AWSSDKConfig.cmake", configurationFile);

    const auto build = sdk.path() / "build";
    cmake({"-S", SOURCE_FOLDER, "-B", build, "-G", "Ninja", "-DS3PROVIDER_AWS_SDK=system",
           "-DAWSSDK_DIR=" + sdk.path().string(), "-DS3PROVIDER_HOST=system",
           "-DS3PROVIDER_CPPMICROSERVICES=standin", "-DCMAKE_CXX_FLAGS=-Werror=invalid-pch",
           "-DCMAKE_UNITY_BUILD=ON", "-DCMAKE_UNITY_BUILD_BATCH_SIZE=12", "-DCMAKE_CXX_COMPILER=" COMPILER,
           "-DCMAKE_CXX_COMPILER_LAUNCHER=" COMPILER_LAUNCHER},
          lookingIn(sdk.path().string()));
    cmake({"--build", build, "--target", "s3provider_bundle_context_tests", "s3provider_docs_tests"});
    output({build / "test/bundle/s3provider_bundle_context_tests"}, toolEnvironment());
}

}  // namespace
