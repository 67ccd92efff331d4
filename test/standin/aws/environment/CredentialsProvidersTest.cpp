#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/client/DefaultRetryStrategy.h>
#include <aws/s3/S3Client.h>
#include <aws/s3/S3EndpointProvider.h>
#include <aws/s3/model/HeadBucketRequest.h>

#include <atomic>
#include <thread>

#include "EnvironmentTest.hpp"

using Aws::Auth::EnvironmentAWSCredentialsProvider;
using Aws::Auth::ProfileConfigFileAWSCredentialsProvider;
using ::testing::HasSubstr;
using testsupport::httpReply;
using testsupport::ScriptedServer;
using testsupport::Step;

namespace {

/// In milliseconds: no time at all, so that every request reads anew.
constexpr long alwaysRefresh = -1;

const char* const nobody = ":";

std::string section(const std::string& profile, const std::string& key) {
    return "[" + profile + "]\naws_access_key_id = " + key + "\naws_secret_access_key = SECRET-OF-" + key +
           "\n";
}

class CredentialsFromVariables : public EnvironmentTest {
protected:
    std::string credentials() { return toString(provider_.GetAWSCredentials()); }

private:
    EnvironmentAWSCredentialsProvider provider_;
};

TEST_F(CredentialsFromVariables, AreReadForEveryRequest) {
    EXPECT_EQ(credentials(), nobody);
    environment.set("AWS_ACCESS_KEY_ID", "KEY");
    environment.set("AWS_SECRET_ACCESS_KEY", "SECRET");
    EXPECT_EQ(credentials(), "KEY:SECRET");
    environment.set("AWS_SESSION_TOKEN", "TOKEN");
    EXPECT_EQ(credentials(), "KEY:SECRET:TOKEN");
    environment.set("AWS_ACCESS_KEY_ID", "OTHER");
    EXPECT_EQ(credentials(), "OTHER:SECRET:TOKEN");
}

TEST_F(CredentialsFromVariables, AreEmptyWithoutAKey) {
    environment.set("AWS_SECRET_ACCESS_KEY", "SECRET");
    environment.set("AWS_SESSION_TOKEN", "TOKEN");
    EXPECT_EQ(credentials(), nobody);
}

TEST_F(CredentialsFromVariables, MayLackASecret) {
    environment.set("AWS_ACCESS_KEY_ID", "KEY");
    EXPECT_EQ(credentials(), "KEY:");
}

TEST_F(CredentialsFromVariables, AreTakenAsTheyStand) {
    environment.set("AWS_ACCESS_KEY_ID", " KEY ");
    environment.set("AWS_SECRET_ACCESS_KEY", "SECRET\t");
    EXPECT_EQ(credentials(), " KEY :SECRET\t");
}

class CredentialsFromAFile : public EnvironmentTest {
protected:
    std::filesystem::path writeKey(const std::string& key) const {
        return write(".aws/credentials", section("default", key));
    }
};

TEST_F(CredentialsFromAFile, AreThoseOfTheProfileThatTheEnvironmentNames) {
    write(".aws/credentials", section("default", "KEY") + section("work", "OTHER"));
    EXPECT_EQ(toString(ProfileConfigFileAWSCredentialsProvider().GetAWSCredentials()), "KEY:SECRET-OF-KEY");
    environment.set("AWS_PROFILE", "work");
    EXPECT_EQ(toString(ProfileConfigFileAWSCredentialsProvider().GetAWSCredentials()),
              "OTHER:SECRET-OF-OTHER");
    EXPECT_EQ(toString(ProfileConfigFileAWSCredentialsProvider("default").GetAWSCredentials()),
              "KEY:SECRET-OF-KEY");
}

TEST_F(CredentialsFromAFile, AreEmptyWithoutFileProfileOrKey) {
    ProfileConfigFileAWSCredentialsProvider provider(alwaysRefresh);
    EXPECT_EQ(toString(provider.GetAWSCredentials()), nobody);
    write(".aws/credentials", section("work", "KEY"));
    EXPECT_EQ(toString(provider.GetAWSCredentials()), nobody);
    write(".aws/credentials", "[default]\naws_secret_access_key = SECRET\n");
    EXPECT_EQ(toString(provider.GetAWSCredentials()), nobody);
}

TEST_F(CredentialsFromAFile, AreReadAnewAfterTheRefreshPeriod) {
    const auto file = writeKey("FIRST");
    ProfileConfigFileAWSCredentialsProvider provider(alwaysRefresh);
    EXPECT_EQ(toString(provider.GetAWSCredentials()), "FIRST:SECRET-OF-FIRST");
    writeKey("SECOND");
    EXPECT_EQ(toString(provider.GetAWSCredentials()), "SECOND:SECRET-OF-SECOND");
    std::filesystem::remove(file);
    EXPECT_EQ(toString(provider.GetAWSCredentials()), nobody);
}

TEST_F(CredentialsFromAFile, AreKeptDuringTheRefreshPeriod) {
    const auto file = writeKey("FIRST");
    ProfileConfigFileAWSCredentialsProvider provider;
    EXPECT_EQ(toString(provider.GetAWSCredentials()), "FIRST:SECRET-OF-FIRST");
    std::filesystem::remove(file);
    EXPECT_EQ(toString(provider.GetAWSCredentials()), "FIRST:SECRET-OF-FIRST");
}

TEST_F(CredentialsFromAFile, ComeFromTheFileThatHadTheNameAtFirst) {
    writeKey("KEY");
    ProfileConfigFileAWSCredentialsProvider provider(alwaysRefresh);
    environment.set("AWS_SHARED_CREDENTIALS_FILE", write("other", section("default", "OTHER")));
    EXPECT_EQ(toString(provider.GetAWSCredentials()), "KEY:SECRET-OF-KEY");
}

TEST_F(CredentialsFromAFile, BelongTogetherWhileTheFileChanges) {
    writeKey("0");
    ProfileConfigFileAWSCredentialsProvider provider(alwaysRefresh);
    std::atomic<bool> stop{false};
    std::atomic<int> wrong{0};
    std::vector<std::thread> readers;
    for (int i = 0; i < 4; ++i) {
        readers.emplace_back([&] {
            while (!stop) {
                const auto credentials = provider.GetAWSCredentials();
                if (credentials.GetAWSSecretKey() != "SECRET-OF-" + credentials.GetAWSAccessKeyId()) ++wrong;
            }
        });
    }
    for (int key = 1; key < 100; ++key) {
        write(".aws/next", section("default", std::to_string(key)));
        std::filesystem::rename(home() / ".aws/next", home() / ".aws/credentials");
    }
    stop = true;
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(toString(provider.GetAWSCredentials()), "99:SECRET-OF-99");
}

TEST_F(CredentialsFromAFile, SignTheNextRequestOnceTheyAreEdited) {
    initializeSdk();
    ScriptedServer server({{Step::send(httpReply(200))}, {Step::send(httpReply(200))}});
    Aws::Client::ClientConfiguration configuration;
    configuration.scheme = Aws::Http::Scheme::HTTP;
    configuration.endpointOverride = server.endpoint();
    const Aws::S3::S3Client client(std::make_shared<ProfileConfigFileAWSCredentialsProvider>(alwaysRefresh),
                                   std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>(),
                                   Aws::S3::S3ClientConfiguration(configuration));
    for (const char* const key : {"FIRST", "SECOND"}) {
        writeKey(key);
        Aws::S3::Model::HeadBucketRequest request;
        request.SetBucket("data");
        EXPECT_TRUE(client.HeadBucket(request).IsSuccess());
        EXPECT_THAT(server.requests().back().header("authorization"),
                    HasSubstr(std::string("Credential=") + key + "/"));
    }
}

}  // namespace
