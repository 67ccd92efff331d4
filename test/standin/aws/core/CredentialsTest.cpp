#include <aws/core/auth/AWSCredentialsProvider.h>
#include <gtest/gtest.h>

using namespace Aws::Auth;
using Aws::Utils::DateTime;

namespace {

TEST(AWSCredentials, AreEmptyAndNeverExpireByDefault) {
    const AWSCredentials credentials;
    EXPECT_TRUE(credentials.IsEmpty());
    EXPECT_FALSE(credentials.IsExpired());
    EXPECT_TRUE(credentials.IsExpiredOrEmpty());
}

TEST(AWSCredentials, AreNotEmptyWithHalfAPair) {
    EXPECT_FALSE(AWSCredentials("A", "").IsEmpty());
    EXPECT_FALSE(AWSCredentials("", "S").IsEmpty());
}

TEST(AWSCredentials, ExpireAtTheirTime) {
    EXPECT_TRUE(AWSCredentials("A", "S", "T", DateTime(int64_t{1000})).IsExpired());
    EXPECT_FALSE(AWSCredentials("A", "S", "T", DateTime::Now() + std::chrono::hours(1)).IsExpired());
}

TEST(AWSCredentials, AreEqualByAllTheirParts) {
    const AWSCredentials credentials("A", "S", "T");
    EXPECT_EQ(credentials, AWSCredentials("A", "S", "T"));
    EXPECT_NE(credentials, AWSCredentials("A", "S"));
    EXPECT_NE(credentials, AWSCredentials("A", "S", "T", DateTime(int64_t{1000})));
}

TEST(SimpleCredentials, AreTheOnesGiven) {
    SimpleAWSCredentialsProvider provider("A", "S", "T");
    EXPECT_EQ(provider.GetAWSCredentials(), AWSCredentials("A", "S", "T"));
}

TEST(AnonymousCredentials, AreEmpty) {
    EXPECT_TRUE(AnonymousAWSCredentialsProvider().GetAWSCredentials().IsEmpty());
}

class ReloadingProvider : public AWSCredentialsProvider {
public:
    AWSCredentials GetAWSCredentials() override {
        if (IsTimeToRefresh(frequencyMs)) Reload();
        return {};
    }
    void Reload() override {
        AWSCredentialsProvider::Reload();
        ++reloads;
    }

    long frequencyMs = 3600000;
    int reloads = 0;
};

TEST(AWSCredentialsProvider, RefreshesAtFirstAndThenAfterItsPeriod) {
    ReloadingProvider provider;
    provider.GetAWSCredentials();
    provider.GetAWSCredentials();
    EXPECT_EQ(provider.reloads, 1);
    provider.frequencyMs = -1;
    provider.GetAWSCredentials();
    EXPECT_EQ(provider.reloads, 2);
}

}  // namespace
