#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <s3server/Server.hpp>

#include "conformance/targets/EmbeddedTarget.hpp"
#include "support/process/Process.hpp"

using namespace testsupport;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

Variables variablesFor(const Access& access) {
    return {{"AWS_EC2_METADATA_DISABLED", "true"},
            {"ZR_AWS_PROXY", "OFF"},
            {"S3PROVIDER_TEST_ENDPOINT", access.endpoint},
            {"S3PROVIDER_TEST_REGION", access.region},
            {"S3PROVIDER_TEST_BUCKET", access.bucket},
            {"S3PROVIDER_TEST_ACCESS_KEY", access.keys.access},
            {"S3PROVIDER_TEST_SECRET_KEY", access.keys.secret},
            {"S3PROVIDER_TEST_SESSION_TOKEN", access.keys.token},
            {"S3PROVIDER_TEST_CA_FILE", access.caFile}};
}

/// The program that holds the suite against the server which the environment names.
Finished runSuite(const Variables& variables, const std::string& filter = "*") {
    return run({CONFIGURED_SERVER_TESTS, "--gtest_filter=" + filter}, variables, "/");
}

}  // namespace

class ConfiguredServerOverEveryWay : public ::testing::TestWithParam<Way> {};

TEST_P(ConfiguredServerOverEveryWay, PassesTheSuiteAndIsLeftAsItWas) {
    EmbeddedTarget target(GetParam());
    target.server().putObject(EmbeddedTarget::bucketName, "somebody's", "content");
    const auto finished = runSuite(variablesFor(target.access()));
    EXPECT_EQ(finished.status, 0) << finished.out << finished.err;
    EXPECT_THAT(finished.out, HasSubstr("[  PASSED  ]"));
    EXPECT_THAT(finished.out, Not(HasSubstr("SKIPPED")));
    EXPECT_THAT(finished.out + finished.err, Not(HasSubstr(target.access().keys.secret)));
    EXPECT_THAT(target.server().keys(EmbeddedTarget::bucketName), ElementsAre("somebody's"));
    EXPECT_EQ(target.server().openUploads(EmbeddedTarget::bucketName), 0u);
}

INSTANTIATE_TEST_SUITE_P(EmbeddedServer, ConfiguredServerOverEveryWay, ::testing::ValuesIn(everyWay),
                         [](const auto& way) { return nameOf(way.param); });

TEST(ConfiguredServer, MayHaveAQuirkThatIsNamed) {
    EmbeddedTarget target(Way::HttpPath);
    target.server().createBucket("american", "us-east-1");
    auto access = target.access();
    access.bucket = "american";
    access.region = "us-east-1";
    auto variables = variablesFor(access);
    EXPECT_EQ(runSuite(variables).status, 1);
    variables["S3PROVIDER_TEST_QUIRKS"] = "leaves-locations-empty";
    EXPECT_EQ(runSuite(variables).status, 0);
}

TEST(ConfiguredServer, TakesTemporaryKeys) {
    EmbeddedTarget target(Way::HttpPath);
    auto access = target.access();
    access.keys = EmbeddedTarget::temporaryKeys();
    EXPECT_EQ(runSuite(variablesFor(access), "*ReadsAnyRange*:*WrongKeys*").status, 0);
}

TEST(ConfiguredServer, FailsWithWrongKeysWithoutPrintingThem) {
    EmbeddedTarget target(Way::HttpPath);
    auto access = target.access();
    access.keys.secret = "wrong-secret";
    const auto finished = runSuite(variablesFor(access), "*ReadsAnyRange*");
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.out + finished.err, Not(HasSubstr("wrong-secret")));
}

TEST(ConfiguredServer, IsSkippedLoudlyWhereNoneIsNamed) {
    const auto finished = runSuite({});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.out, HasSubstr("S3PROVIDER_TEST_ENDPOINT isn't set"));
    EXPECT_THAT(finished.out, Not(HasSubstr("[       OK ]")));
}

TEST(ConfiguredServer, FailsWhereTheEnvironmentIsIncomplete) {
    const Variables endpointOnly = {{"S3PROVIDER_TEST_ENDPOINT", "http://127.0.0.1:1"}};
    const auto finished = runSuite(endpointOnly, "*ReadsAnyRange*");
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.out, HasSubstr("S3PROVIDER_TEST_BUCKET isn't set"));
    auto misspelt = variablesFor({"http://127.0.0.1:1", "eu-west-3", "b", {"a", "s", ""}, ""});
    misspelt["S3PROVIDER_TEST_QUIRKS"] = "slow";
    EXPECT_THAT(runSuite(misspelt, "*ReadsAnyRange*").out, HasSubstr("'slow' is no known quirk"));
}
