#include <aws/core/client/ClientConfiguration.h>
#include <gtest/gtest.h>

using Aws::Client::ClientConfiguration;
using Aws::Client::FollowRedirectsPolicy;
using Aws::Http::Scheme;

namespace {

TEST(ClientConfiguration, HasTheSdksDefaults) {
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

TEST(ClientConfiguration, RetriesTenTimesByDefault) {
    const ClientConfiguration configuration;
    ASSERT_NE(configuration.retryStrategy, nullptr);
    EXPECT_STREQ(configuration.retryStrategy->GetStrategyName(), "default");
    EXPECT_EQ(configuration.retryStrategy->GetMaxAttempts(), 11);
}

TEST(Scheme, IsNamedAndReadInAnyCase) {
    EXPECT_STREQ(Aws::Http::SchemeMapper::ToString(Scheme::HTTP), "http");
    EXPECT_STREQ(Aws::Http::SchemeMapper::ToString(Scheme::HTTPS), "https");
    EXPECT_EQ(Aws::Http::SchemeMapper::FromString("HTTP"), Scheme::HTTP);
    EXPECT_EQ(Aws::Http::SchemeMapper::FromString("https"), Scheme::HTTPS);
}

}  // namespace
