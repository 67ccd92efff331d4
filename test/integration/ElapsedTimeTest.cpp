#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <s3server/Server.hpp>

#include "integration/FakedClock.hpp"
#include "support/servers/MetadataService.hpp"

using namespace testsupport;
using namespace std::chrono_literals;
using ::testing::HasSubstr;
using Manner = MetadataService::Manner;

namespace {

const std::string written = "written";

/// The plug-in in a process whose clock is moved by hand. Skips the test where libfaketime isn't installed.
class ElapsedTime : public ::testing::Test {
protected:
    void SetUp() override {
        if (!FakedClock::installedLibrary())
            GTEST_SKIP() << "libfaketime isn't installed; tools/install-deps integration installs it";
        server.createBucket("bucket", "eu-west-3");
    }

    static s3server::Credentials roleOf(const std::string& accessKey) {
        return {accessKey, "secret-of-" + accessKey, "token-of-" + accessKey};
    }

    s3server::Options optionsOfServer() {
        s3server::Options options;
        options.clock = [this] { return clock.now(); };
        options.credentials = {
            roleOf("machine"), roleOf("later"), {"first", "secret", ""}, {"second", "secret", ""}};
        return options;
    }

    Variables environment(const std::string& metadata) const {
        Variables variables = clock.variables();
        variables.merge(Variables{{"HOME", home.path().string()},
                                  {"AWS_REGION", "eu-west-3"},
                                  {"AWS_EC2_METADATA_SERVICE_ENDPOINT", metadata},
                                  {"ZR_AWS_ENDPOINT_OVERRIDE", "http://" + server.endpoint()},
                                  {"ZR_AWS_PROXY", "OFF"}});
        return variables;
    }

    InteractiveProcess writer(const MetadataService& metadata) const {
        return InteractiveProcess({WRITER, "bucket"}, environment(metadata.url()), home.path().string());
    }

    std::filesystem::path writeKeys(const std::string& accessKey) const {
        return home.write(".aws/credentials", "[default]\naws_access_key_id = " + accessKey +
                                                  "\naws_secret_access_key = secret\n");
    }

    /// The access key that signed the last request; empty when none did.
    std::string signer() const {
        const auto signature = server.requests().back().header("authorization").value_or("");
        const std::string before = "Credential=";
        const auto start = signature.find(before);
        if (start == std::string::npos) return "";
        return signature.substr(start + before.size(), signature.find('/') - start - before.size());
    }

    const TemporaryFolder home{"elapsed-time"};
    FakedClock clock;
    s3server::Server server{optionsOfServer()};
};

TEST_F(ElapsedTime, LetsAServiceThatNeverHadARoleBeAskedOncePer300SecondsAtMost) {
    const MetadataService metadata(Manner::Without);
    auto process = writer(metadata);
    EXPECT_NE(process.ask("file"), written);
    EXPECT_GT(metadata.asked(), 0u);
    std::chrono::seconds sinceAsked = 0s;
    for (int i = 0; i < 40; ++i) {
        clock.advance(50s);
        sinceAsked += 50s;
        const auto before = metadata.asked();
        EXPECT_NE(process.ask("file"), written);
        if (metadata.asked() == before) {
            EXPECT_LE(sinceAsked.count(), 300);
        } else {
            EXPECT_GE(sinceAsked.count(), 300);
            sinceAsked = 0s;
        }
    }
}

TEST_F(ElapsedTime, BringsTheRoleThatAMachineGetsLater) {
    MetadataService metadata(Manner::Right, "");
    auto process = writer(metadata);
    EXPECT_NE(process.ask("file"), written);
    metadata.give("later");
    clock.advance(300s);
    EXPECT_NE(process.ask("file"), written);
    EXPECT_EQ(signer(), "");
    clock.advance(1s);
    EXPECT_EQ(process.ask("file"), written);
    EXPECT_EQ(signer(), "later");
}

TEST_F(ElapsedTime, BringsTheNextCredentialsOfARole) {
    MetadataService metadata(Manner::Right, "machine");
    auto process = writer(metadata);
    EXPECT_EQ(process.ask("file"), written);
    metadata.give("later");
    clock.advance(300s);
    EXPECT_EQ(process.ask("file"), written);
    EXPECT_EQ(signer(), "machine");
    clock.advance(1s);
    EXPECT_EQ(process.ask("file"), written);
    EXPECT_EQ(signer(), "later");
}

TEST_F(ElapsedTime, IsNotWaitedForWhenARoleComesBack) {
    MetadataService metadata(Manner::Right, "machine");
    auto process = writer(metadata);
    EXPECT_EQ(process.ask("file"), written);
    metadata.giveNothing();
    clock.advance(301s);
    EXPECT_NE(process.ask("file"), written);
    metadata.give("later");
    EXPECT_EQ(process.ask("file"), written);
    EXPECT_EQ(signer(), "later");
}

TEST_F(ElapsedTime, IsNotWaitedForWhenTheCredentialsFileIsEdited) {
    const MetadataService metadata(Manner::Without);
    writeKeys("first");
    auto process = writer(metadata);
    EXPECT_EQ(process.ask("file"), written);
    EXPECT_EQ(signer(), "first");
    const auto file = writeKeys("second");
    std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) + 1s);
    EXPECT_EQ(process.ask("file"), written);
    EXPECT_EQ(signer(), "second");
    EXPECT_EQ(metadata.asked(), 0u);
}

TEST_F(ElapsedTime, BringsTheKeysOfAFileThatLooksUnchanged) {
    const MetadataService metadata(Manner::Without);
    const auto time = std::filesystem::last_write_time(writeKeys("first"));
    auto process = writer(metadata);
    EXPECT_EQ(process.ask("file"), written);
    std::filesystem::last_write_time(writeKeys("second"), time);
    clock.advance(300s);
    EXPECT_EQ(process.ask("file"), written);
    EXPECT_EQ(signer(), "first");
    clock.advance(1s);
    EXPECT_EQ(process.ask("file"), written);
    EXPECT_EQ(signer(), "second");
}

}  // namespace
