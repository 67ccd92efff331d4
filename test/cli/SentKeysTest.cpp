#include "framework/SentKeys.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

#include <functional>
#include <s3server/Server.hpp>
#include <sstream>
#include <storage/cloudprovider/CloudException.hpp>
#include <string>
#include <vector>

#include "AwsS3ClientFactory.hpp"
#include "S3CloudClient.hpp"
#include "framework/AwsSdk.hpp"
#include "support/process/CleanEnvironment.hpp"
#include "support/servers/ScriptedServer.hpp"
#include "support/servers/ServerEnvironment.hpp"

using storage::cloudprovider::PartInfo;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::ValuesIn;

namespace {

const std::string ordinaryKeys[] = {
    "a",         "a/b/c.txt", "folder/", "\u00fc \u20ac/b c", "100%/%2F%2e%2e/x", "a?b#c&d=e+f;g,h:i@j$k",
    ".hidden/x", "..a/b..",   "...",     "a/.../b",           "back\\slash",      "*'()!~|\"<>",
    "\x01/\x7f"};
const std::string oddKeys[] = {"a//b", "/lead",  "//",        "/",    "a//", "//a//b//",
                               "./a",  "a/./b",  "a/.",       "a/./", "..",  "../a",
                               "a/..", "a/../b", "a/../../b", ".",    "./",  "a//../b"};

/// A bucket, and a client of it that asks nobody what keys become.
class SentKeys : public ::testing::TestWithParam<std::string> {
protected:
    SentKeys() {
        for (const auto& [name, value] : testsupport::leadingTo(server))
            environment.set(name, value);
        server.createBucket("demo");
    }

    /// What only the object of this key can do is done with it. Whether all of it was.
    static bool works(storage::cloudprovider::CloudClient& client, const std::string& key) try {
        std::istringstream content("content of " + key);
        client.upload(key, content, content.str().size());
        const auto id = client.startMultipartUpload(key, "");
        PartInfo part{0, 0, content.str().size(), ""};
        part.Tag = client.reusePart(key, id, part);
        client.completeMultipartUpload(key, id, {part});
        std::ostringstream read;
        client.download(key, read, 0, 0);
        return read.str() == content.str();
    } catch (const storage::cloudprovider::CloudException&) {
        return false;
    }

    bool isAddressed(const std::string& key) {
        auto configuration = storage::s3provider::makeClientConfiguration();
        configuration.region = "us-east-1";
        configuration.endpointOverride = "http://" + server.endpoint();
        storage::s3provider::S3CloudClient client("demo", storage::s3provider::makeS3Client(configuration),
                                                  {1, 0}, configuration.region);
        return works(client, key) && server.object("demo", key) == "content of " + key;
    }

    const testsupport::CleanEnvironment clean;
    testsupport::Environment environment;
    s3server::Server server;
    const s3vfs::AwsSdk sdk;
};

class OrdinaryKeys : public SentKeys {};
class OddKeys : public SentKeys {};

TEST_P(OrdinaryKeys, AreNeverRefused) {
    EXPECT_EQ(s3vfs::whyNotAddressable(GetParam()).value_or(""), "");
    EXPECT_TRUE(isAddressed(GetParam()));
}

// Held against what the SDK does with the key, whichever SDK that is.
TEST_P(OddKeys, AreRefusedWhenTheSdkWouldAddressAnotherObject) {
    const auto reason = s3vfs::whyNotAddressable(GetParam());
    EXPECT_THAT(server.requests(), IsEmpty());
    const bool addressed = isAddressed(GetParam());
    EXPECT_EQ(addressed, !reason) << reason.value_or("not refused");
    if (reason) {
        EXPECT_THAT(*reason, HasSubstr("this AWS SDK would"));
    }
    if (reason && server.keys("demo").size() == 1) {
        EXPECT_THAT(*reason, HasSubstr('"' + server.keys("demo").front() + '"'));
    }
    if (KEYS_ARE_LITERAL) {
        EXPECT_TRUE(addressed);
    }
}

INSTANTIATE_TEST_SUITE_P(Keys, OrdinaryKeys, ValuesIn(ordinaryKeys));
INSTANTIATE_TEST_SUITE_P(Keys, OddKeys, ValuesIn(oddKeys));

TEST_F(SentKeys, AreFoundOutWhateverTheEnvironmentSays) {
    const auto reason = s3vfs::whyNotAddressable("a/../b");
    testsupport::ScriptedServer elsewhere;
    const std::string there = "http://" + elsewhere.endpoint();
    for (const char* name : {"http_proxy", "HTTP_PROXY", "all_proxy", "ZR_AWS_ENDPOINT_OVERRIDE",
                             "AWS_ENDPOINT_URL", "AWS_ENDPOINT_URL_S3", "AWS_EC2_METADATA_SERVICE_ENDPOINT"})
        environment.set(name, there);
    environment.unset("AWS_REGION");
    environment.unset("AWS_EC2_METADATA_DISABLED");
    environment.set("AWS_USE_FIPS_ENDPOINT", "true");
    environment.set("AWS_USE_DUALSTACK_ENDPOINT", "true");
    EXPECT_EQ(s3vfs::whyNotAddressable("a/../b").value_or(""), reason.value_or(""));
    EXPECT_THAT(reason.value_or(""), Not(HasSubstr("found out")));
    EXPECT_EQ(elsewhere.connections(), 0u);
}

/// While it lives, the process can open no file and no socket more.
class NoDescriptorsLeft {
public:
    NoDescriptorsLeft() {
        ::getrlimit(RLIMIT_NOFILE, &before_);
        const rlimit none{0, before_.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoDescriptorsLeft() { ::setrlimit(RLIMIT_NOFILE, &before_); }
    NoDescriptorsLeft(const NoDescriptorsLeft&) = delete;
    NoDescriptorsLeft& operator=(const NoDescriptorsLeft&) = delete;

private:
    rlimit before_{};
};

TEST_F(SentKeys, AreRefusedWhenThatCantBeFoundOut) {
    const NoDescriptorsLeft none;
    EXPECT_THAT(s3vfs::whyNotAddressable("a/../b").value_or(""),
                HasSubstr("how this AWS SDK would send it couldn't be found out: "));
    EXPECT_EQ(s3vfs::whyNotAddressable("a/b"), std::nullopt);
}

TEST_F(SentKeys, ArentEmpty) {
    EXPECT_EQ(s3vfs::whyNotAddressable("").value_or(""), "it is empty");
}

}  // namespace
