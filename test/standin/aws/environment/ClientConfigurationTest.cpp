#include <aws/core/client/ClientConfiguration.h>

#include "EnvironmentTest.hpp"

using Aws::Client::ClientConfiguration;
using Aws::Client::FollowRedirectsPolicy;
using Aws::Http::Scheme;
using testsupport::ScriptedServer;

namespace {

class Configuration : public EnvironmentTest {};

TEST_F(Configuration, HasTheSdksDefaults) {
    const ClientConfiguration configuration;
    EXPECT_EQ(configuration.region, "us-east-1");
    EXPECT_EQ(configuration.scheme, Scheme::HTTPS);
    EXPECT_EQ(configuration.endpointOverride, "");
    EXPECT_EQ(configuration.maxConnections, 25U);
    EXPECT_EQ(configuration.httpRequestTimeoutMs, 0);
    EXPECT_EQ(configuration.requestTimeoutMs, 3000);
    EXPECT_EQ(configuration.connectTimeoutMs, 1000);
    EXPECT_TRUE(configuration.enableTcpKeepAlive);
    EXPECT_EQ(configuration.tcpKeepAliveIntervalMs, 30000U);
    EXPECT_EQ(configuration.lowSpeedLimit, 1U);
    EXPECT_FALSE(configuration.allowSystemProxy);
    EXPECT_EQ(configuration.proxyScheme, Scheme::HTTP);
    EXPECT_EQ(configuration.proxyHost, "");
    EXPECT_EQ(configuration.proxyPort, 0U);
    EXPECT_TRUE(configuration.verifySSL);
    EXPECT_EQ(configuration.caPath, "");
    EXPECT_EQ(configuration.caFile, "");
    EXPECT_EQ(configuration.followRedirects, FollowRedirectsPolicy::DEFAULT);
    EXPECT_FALSE(configuration.disableExpectHeader);
    EXPECT_TRUE(configuration.enableClockSkewAdjustment);
    EXPECT_EQ(configuration.profileName, "default");
}

TEST_F(Configuration, RetriesTenTimesByDefault) {
    const ClientConfiguration configuration;
    ASSERT_NE(configuration.retryStrategy, nullptr);
    EXPECT_STREQ(configuration.retryStrategy->GetStrategyName(), "default");
    EXPECT_EQ(configuration.retryStrategy->GetMaxAttempts(), 11);
}

TEST_F(Configuration, HasTheEnvironmentsRegion) {
    environment.set("AWS_REGION", "eu-west-1");
    EXPECT_EQ(ClientConfiguration().region, "eu-west-1");
    environment.set("AWS_DEFAULT_REGION", "eu-west-2");
    EXPECT_EQ(ClientConfiguration().region, "eu-west-2");
    environment.set("AWS_DEFAULT_REGION", "");
    EXPECT_EQ(ClientConfiguration().region, "eu-west-1");
}

TEST_F(Configuration, HasTheRegionOfTheProfileThatTheEnvironmentNames) {
    write(".aws/config", "[default]\nregion = eu-west-1\n[profile work]\nregion = eu-west-2\n");
    initializeSdk();
    EXPECT_EQ(ClientConfiguration().region, "eu-west-1");
    environment.set("AWS_PROFILE", "work");
    EXPECT_EQ(ClientConfiguration().region, "eu-west-2");
    EXPECT_EQ(ClientConfiguration().profileName, "work");
    EXPECT_EQ(ClientConfiguration("default").region, "eu-west-1");
    EXPECT_EQ(ClientConfiguration("missing").region, "us-east-1");
}

TEST_F(Configuration, KeepsToTheConfigFileAsItWasAtFirst) {
    write(".aws/config", "[default]\nregion = eu-west-1\n");
    initializeSdk();
    write(".aws/config", "[default]\nregion = eu-west-2\n");
    EXPECT_EQ(ClientConfiguration().region, "eu-west-1");
}

/// On a machine that knows where it is.
class ConfigurationOnAMachine : public EnvironmentTest {
protected:
    ConfigurationOnAMachine() {
        environment.unset("AWS_EC2_METADATA_DISABLED");
        environment.set("AWS_EC2_METADATA_SERVICE_ENDPOINT", "http://" + service.endpoint());
        initializeSdk();
    }

    static std::vector<testsupport::Script> answers() {
        auto scripts = metadata::conversation(metadata::credentials("KEY"));
        scripts.push_back(metadata::text("eu-west-3a"));
        return scripts;
    }

    ScriptedServer service{answers()};
};

TEST_F(ConfigurationOnAMachine, HasTheMachinesRegion) {
    EXPECT_EQ(ClientConfiguration().region, "eu-west-3");
    EXPECT_EQ(ClientConfiguration().region, "eu-west-3");
    EXPECT_EQ(service.requests().size(), 4U);
}

TEST_F(ConfigurationOnAMachine, DoesNotAskItWhenARegionIsSet) {
    environment.set("AWS_REGION", "eu-west-1");
    EXPECT_EQ(ClientConfiguration().region, "eu-west-1");
    EXPECT_EQ(service.connections(), 0U);
}

TEST_F(ConfigurationOnAMachine, DoesNotAskItWhenItIsNotWantedTo) {
    EXPECT_EQ(ClientConfiguration("default", true).region, "us-east-1");
    environment.set("AWS_EC2_METADATA_DISABLED", "TRUE");
    EXPECT_EQ(ClientConfiguration().region, "us-east-1");
    EXPECT_EQ(service.connections(), 0U);
}

TEST(Scheme, IsNamedAndReadInAnyCase) {
    EXPECT_STREQ(Aws::Http::SchemeMapper::ToString(Scheme::HTTP), "http");
    EXPECT_STREQ(Aws::Http::SchemeMapper::ToString(Scheme::HTTPS), "https");
    EXPECT_EQ(Aws::Http::SchemeMapper::FromString("HTTP"), Scheme::HTTP);
    EXPECT_EQ(Aws::Http::SchemeMapper::FromString("https"), Scheme::HTTPS);
}

}  // namespace
