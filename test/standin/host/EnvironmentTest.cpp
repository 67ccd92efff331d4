#include "support/process/Environment.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <string>
#include <system_error>

namespace {

using testsupport::Environment;

std::optional<std::string> variable(const char* name) {
    const char* const value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): one thread
    return value ? std::optional<std::string>(value) : std::nullopt;
}

TEST(Environment, SetsAndUnsetsWhileItLives) {
    const Environment before{{"S3P_TEST_A", "a"}, {"S3P_TEST_B", std::nullopt}};
    {
        const Environment inner{{"S3P_TEST_A", std::nullopt}, {"S3P_TEST_B", "b"}};
        EXPECT_EQ(variable("S3P_TEST_A"), std::nullopt);
        EXPECT_EQ(variable("S3P_TEST_B"), "b");
    }
    EXPECT_EQ(variable("S3P_TEST_A"), "a");
    EXPECT_EQ(variable("S3P_TEST_B"), std::nullopt);
}

TEST(Environment, PutsBackTheFirstValueOfAVariableChangedTwice) {
    const Environment before{{"S3P_TEST_A", "first"}};
    {
        Environment inner;
        inner.set("S3P_TEST_A", "second");
        inner.unset("S3P_TEST_A");
        inner.set("S3P_TEST_A", "third");
        EXPECT_EQ(variable("S3P_TEST_A"), "third");
    }
    EXPECT_EQ(variable("S3P_TEST_A"), "first");
}

TEST(Environment, KeepsAnEmptyValueApartFromNone) {
    const Environment environment{{"S3P_TEST_A", ""}};
    EXPECT_EQ(variable("S3P_TEST_A"), "");
}

TEST(Environment, RefusesANameThatNoVariableCanHave) {
    Environment environment;
    EXPECT_THROW(environment.set("S3P=TEST", "a"), std::system_error);
}

TEST(Environment, PutsBackWhatItChangedBeforeItWasRefused) {
    const Environment before{{"S3P_TEST_A", "a"}};
    EXPECT_THROW((Environment{{"S3P_TEST_A", "changed"}, {"S3P=TEST", "x"}}), std::system_error);
    EXPECT_EQ(variable("S3P_TEST_A"), "a");
}

}  // namespace
