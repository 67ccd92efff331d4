#include <aws/core/client/ClientConfiguration.h>

#include <algorithm>

#include "EnvironmentTest.hpp"

using Aws::Client::ClientConfiguration;
using Aws::Client::ComputeUserAgentString;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

namespace {

class UserAgent : public EnvironmentTest {};

TEST_F(UserAgent, TellsTheSdkTheSystemAndTheRetryMode) {
    EXPECT_THAT(ComputeUserAgentString(), StartsWith("aws-sdk-cpp/1.11.274 ua/2.0 "));
    EXPECT_THAT(ComputeUserAgentString(), HasSubstr(" os/Linux/"));
    EXPECT_THAT(ComputeUserAgentString(), EndsWith(" cfg/retry-mode#default"));
    environment.set("AWS_RETRY_MODE", "standard");
    const ClientConfiguration configuration;
    EXPECT_THAT(ComputeUserAgentString(&configuration), EndsWith(" cfg/retry-mode#standard"));
}

TEST_F(UserAgent, TellsTheExecutionEnvironmentAndTheApplication) {
    environment.set("AWS_EXECUTION_ENV", "AWS_ECS_EC2");
    environment.set("AWS_SDK_UA_APP_ID", "notebook");
    EXPECT_THAT(ComputeUserAgentString(), EndsWith(" exec-env/AWS_ECS_EC2 app/notebook"));
}

TEST_F(UserAgent, TakesTheApplicationFromTheProfileWithoutAVariable) {
    write(".aws/config", "[default]\nsdk_ua_app_id = from the profile\n");
    initializeSdk();
    EXPECT_THAT(ComputeUserAgentString(), EndsWith(" app/from_the_profile"));
    environment.set("AWS_SDK_UA_APP_ID", "variable");
    EXPECT_THAT(ComputeUserAgentString(), EndsWith(" app/variable"));
}

TEST_F(UserAgent, KeepsTheApplicationsIdInOneWord) {
    environment.set("AWS_SDK_UA_APP_ID", "my app\r\nx-evil: 1\t\x01\x7f");
    EXPECT_THAT(ComputeUserAgentString(), EndsWith(" app/my_app__x-evil:_1___"));
}

TEST_F(UserAgent, KeepsTheExecutionEnvironmentInOneWord) {
    environment.set("AWS_EXECUTION_ENV", "a\r\nx-evil: 1");
    EXPECT_THAT(ComputeUserAgentString(), EndsWith(" exec-env/a__x-evil:_1"));
}

}  // namespace
