#include <gmock/gmock.h>

#include "support/process/Process.hpp"
#include "support/process/TemporaryFolder.hpp"

using namespace testsupport;
using ::testing::HasSubstr;

namespace {

const Variables environment{{"PATH", "/usr/sbin:/usr/bin:/sbin:/bin"}, {"LC_ALL", "C"}};

/// What tools/skipped prints after a run of CTest on these tests, a line of CMake each.
std::string skippedOf(const std::string& tests) {
    const TemporaryFolder folder;
    folder.write("CMakeLists.txt",
                 "cmake_minimum_required(VERSION 3.25)\nproject(some NONE)\nenable_testing()\n" + tests);
    const auto build = (folder.path() / "build").string();
    EXPECT_EQ(run({CMAKE_PROGRAM, "-S", folder.path(), "-B", build}, environment, "/").status, 0);
    run({CTEST_PROGRAM, "--test-dir", build}, environment, "/");
    const auto finished = run({TOOLS_FOLDER "/skipped", build}, environment, "/");
    EXPECT_EQ(finished.status, 0) << finished.err;
    return finished.out;
}

TEST(SkippedTests, AreToldWithTheReasonThatGoogleTestPrints) {
    EXPECT_EQ(skippedOf(R"cmake(
add_test(NAME Tool.Runs COMMAND printf "%s\\n" "[ RUN      ] Tool.Runs" "/a/Tool.cpp:39: Skipped" "no tool"
  "no tool" "" "[  SKIPPED ] Tool.Runs (0 ms)")
set_tests_properties(Tool.Runs PROPERTIES SKIP_REGULAR_EXPRESSION "SKIPPED")
)cmake"),
              "Tool.Runs: no tool\n");
}

TEST(SkippedTests, OfAProgramThatRunsOthersAreTold) {
    EXPECT_EQ(skippedOf(R"cmake(
add_test(NAME both COMMAND printf "%s\\n" "/a/B.cpp:1: Skipped" "no b" "[       OK ] B.Works" "/a/C.cpp:2: Skipped" "no c")
)cmake"),
              "both: no b\nboth: no c\n");
}

TEST(SkippedTests, AreToldWithTheReasonThatAScriptPrints) {
    EXPECT_EQ(skippedOf(R"cmake(
add_test(NAME root COMMAND sh -c "echo 'fresh-root: SKIPPED, there is no root' >&2; exit 77")
set_tests_properties(root PROPERTIES SKIP_RETURN_CODE 77)
)cmake"),
              "root: there is no root\n");
}

TEST(SkippedTests, AreToldWithTheirExpressionWhenNothingElseIsSaid) {
    EXPECT_THAT(skippedOf(R"cmake(
add_test(NAME quiet COMMAND echo "isn't installed")
set_tests_properties(quiet PROPERTIES SKIP_REGULAR_EXPRESSION "isn't")
)cmake"),
                HasSubstr("quiet: Skip regular expression found in output. Regex=[isn't]"));
}

TEST(SkippedTests, ArentThoseThatPassOrFail) {
    EXPECT_EQ(skippedOf("add_test(NAME good COMMAND true)\nadd_test(NAME bad COMMAND false)\n"), "");
}

/// Where in-debian finds none of the programs that it needs, or may not.
Finished runWithoutARoot(const std::string& ci) {
    const TemporaryFolder folder;
    return run({"/bin/sh", TOOLS_FOLDER "/in-debian", "trixie", "true"},
               {{"PATH", folder.path()}, {"CI", ci}}, "/");
}

TEST(DebianRoot, ThatCantBeIsSkippedAndSaidSo) {
    const auto finished = runWithoutARoot("");
    EXPECT_EQ(finished.status, 77);
    EXPECT_THAT(finished.err, HasSubstr("in-debian: SKIPPED, nothing was tried on Debian's 'trixie': "));
}

TEST(DebianRoot, ThatCantBeIsAFailureInCi) {
    const auto finished = runWithoutARoot("true");
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.err, HasSubstr("in-debian: SKIPPED"));
}

}  // namespace
