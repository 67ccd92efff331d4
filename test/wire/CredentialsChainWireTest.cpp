#include <aws/core/Aws.h>
#include <aws/s3/S3EndpointProvider.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <fl/i18n.hpp>
#include <future>
#include <optional>
#include <system_error>

#include "AwsS3ClientFactory.hpp"
#include "CredentialsSources.hpp"
#include "ZRCredentialsProviderChain.hpp"
#include "support/plugin/FactoryTest.hpp"
#include "support/servers/MetadataService.hpp"
#include "support/servers/ScriptedServer.hpp"

using namespace testsupport;
using storage::s3provider::ZRCredentialsProviderChain;

namespace {

std::string profile(const std::string& key) {
    return "[default]\naws_access_key_id = " + key + "\naws_secret_access_key = secret-of-" + key + "\n";
}

/// Notices when somebody opens a file.
class OpenedFile {
public:
    explicit OpenedFile(const std::filesystem::path& file) : events_(::inotify_init1(IN_NONBLOCK)) {
        if (::inotify_add_watch(events_, file.c_str(), IN_OPEN) < 0)
            throw std::system_error(errno, std::generic_category(), "inotify");
    }
    ~OpenedFile() { ::close(events_); }
    OpenedFile(const OpenedFile&) = delete;
    OpenedFile& operator=(const OpenedFile&) = delete;

    /// Since the last question.
    bool wasOpened() const {
        alignas(inotify_event) std::array<char, 4096> events{};
        return ::read(events_, events.data(), events.size()) > 0;
    }

private:
    int events_;
};

class Sdk {
public:
    Sdk() { Aws::InitAPI(options_); }
    ~Sdk() { Aws::ShutdownAPI(options_); }
    Sdk(const Sdk&) = delete;
    Sdk& operator=(const Sdk&) = delete;

private:
    Aws::SDKOptions options_;
};

/// An SDK that found a machine's metadata service when it was initialized.
class SdkOnAMachine {
public:
    SdkOnAMachine(Environment& environment, const std::string& metadataUrl) {
        environment.unset("AWS_EC2_METADATA_DISABLED");
        environment.set("AWS_EC2_METADATA_SERVICE_ENDPOINT", metadataUrl);
        sdk_.emplace();
    }

private:
    std::optional<Sdk> sdk_;
};

/// A chain on a machine whose metadata service has nothing.
class CredentialsChain : public FactoryTest {
protected:
    void setKeys(const char* key, const char* secret) {
        environment.set("AWS_ACCESS_KEY_ID", key);
        environment.set("AWS_SECRET_ACCESS_KEY", secret);
    }

    /// Later than any time a file got by being written.
    void touch(const std::filesystem::path& file) {
        laterBy_ += std::chrono::seconds(10);
        std::filesystem::last_write_time(file, std::filesystem::file_time_type::clock::now() + laterBy_);
    }

    std::size_t asked() const { return metadata.requests().size(); }

    static ScriptedServer::Options always() {
        ScriptedServer::Options options;
        options.repeatLast = true;
        return options;
    }

    ScriptedServer metadata{{{Step::send(httpReply(404))}}, always()};
    SdkOnAMachine sdk{environment, "http://" + metadata.endpoint()};

private:
    std::chrono::seconds laterBy_{0};
};

void expectKeys(const Aws::Auth::AWSCredentials& credentials, const std::string& key,
                const std::string& secret, const std::string& token = "") {
    EXPECT_EQ(credentials.GetAWSAccessKeyId(), key);
    EXPECT_EQ(credentials.GetAWSSecretKey(), secret);
    EXPECT_EQ(credentials.GetSessionToken(), token);
}

template <typename Provider>
bool isA(const Aws::Auth::AWSCredentialsProvider& source) {
    return dynamic_cast<const Provider*>(&source) != nullptr;
}

// That the SDK reads the environment, too, can't be told from what the chain gives: the host reads it first.
TEST_F(CredentialsChain, AsksThreeOfTheSdksOwnSourcesAfterTheHosts) {
    using namespace Aws::Auth;
    std::vector<std::shared_ptr<AWSCredentialsProvider>> sources;
    for (const auto& source : storage::s3provider::credentialsSources)
        sources.push_back(source.make());
    ASSERT_EQ(sources.size(), 4u);
    EXPECT_FALSE(isA<EnvironmentAWSCredentialsProvider>(*sources[0]));
    EXPECT_TRUE(isA<EnvironmentAWSCredentialsProvider>(*sources[1]));
    EXPECT_TRUE(isA<ProfileConfigFileAWSCredentialsProvider>(*sources[2]));
    EXPECT_TRUE(isA<InstanceProfileCredentialsProvider>(*sources[3]));
}

TEST_F(CredentialsChain, TakesTheEnvironmentsKeysAndAsksNobodyElse) {
    write(".aws/credentials", profile("file"));
    setKeys("key", "secret");
    ZRCredentialsProviderChain chain;
    expectKeys(chain.GetAWSCredentials(), "key", "secret");
    environment.set("AWS_SESSION_TOKEN", "token");
    expectKeys(chain.GetAWSCredentials(), "key", "secret", "token");
    setKeys("other", "changed");
    expectKeys(chain.GetAWSCredentials(), "other", "changed", "token");
    EXPECT_EQ(asked(), 0u);
}

TEST_F(CredentialsChain, ReadsTheEnvironmentAsTheHostDoes) {
    setKeys("key", "\xFF");
    environment.set("AWS_SESSION_TOKEN", "\xFE");
    ZRCredentialsProviderChain chain;
    expectKeys(chain.GetAWSCredentials(), "key", "\xEF\xBF\xBD", "\xEF\xBF\xBD");
}

TEST_F(CredentialsChain, LooksAtTheFileOnlyFromOutsideWhileTheEnvironmentHasKeys) {
    const OpenedFile file(write(".aws/credentials", profile("file")));
    expectKeys(ZRCredentialsProviderChain().GetAWSCredentials(), "file", "secret-of-file");
    EXPECT_TRUE(file.wasOpened());
    setKeys("key", "secret");
    ZRCredentialsProviderChain chain;
    expectKeys(chain.GetAWSCredentials(), "key", "secret");
    EXPECT_FALSE(file.wasOpened());
    environment.set("AWS_SHARED_CREDENTIALS_FILE", "\xFF");  // no name to look at
    EXPECT_THROW(chain.GetAWSCredentials(), fl::i18n::conversion_error);
    EXPECT_THROW(ZRCredentialsProviderChain(), fl::i18n::conversion_error);
}

TEST_F(CredentialsChain, PassesOverASecretWithoutKey) {
    write(".aws/credentials", profile("file"));
    environment.set("AWS_SECRET_ACCESS_KEY", "secret");
    ZRCredentialsProviderChain chain;
    expectKeys(chain.GetAWSCredentials(), "file", "secret-of-file");
}

TEST_F(CredentialsChain, PassesOverAKeyWithoutSecret) {
    write(".aws/credentials", profile("file"));
    environment.set("AWS_ACCESS_KEY_ID", "key");
    ZRCredentialsProviderChain chain;
    expectKeys(chain.GetAWSCredentials(), "file", "secret-of-file");
    EXPECT_EQ(asked(), 0u);
}

TEST_F(CredentialsChain, HasEmptyCredentialsWhenNobodyHasAny) {
    ZRCredentialsProviderChain chain;
    expectKeys(chain.GetAWSCredentials(), "", "");
    EXPECT_GT(asked(), 0u);
}

TEST_F(CredentialsChain, LeavesAMetadataServiceAloneThatHasNothing) {
    ZRCredentialsProviderChain chain;
    chain.GetAWSCredentials();
    const auto once = asked();
    ASSERT_GT(once, 0u);
    for (int i = 0; i < 20; ++i)
        chain.GetAWSCredentials();
    EXPECT_EQ(asked(), once);
}

TEST_F(CredentialsChain, ReadsTheCredentialsFileAgainWhenItChanges) {
    const auto file = write(".aws/credentials", profile("first"));
    ZRCredentialsProviderChain chain;
    expectKeys(chain.GetAWSCredentials(), "first", "secret-of-first");
    write(".aws/credentials", profile("second"));
    touch(file);
    expectKeys(chain.GetAWSCredentials(), "second", "secret-of-second");
    std::filesystem::remove(file);
    expectKeys(chain.GetAWSCredentials(), "", "");
    write(".aws/credentials", profile("third"));
    expectKeys(chain.GetAWSCredentials(), "third", "secret-of-third");
}

TEST_F(CredentialsChain, KeepsWhatItReadFromAFileThatLooksUnchanged) {
    const auto file = write(".aws/credentials", profile("first"));
    const auto time = std::filesystem::last_write_time(file);
    ZRCredentialsProviderChain chain;
    expectKeys(chain.GetAWSCredentials(), "first", "secret-of-first");
    write(".aws/credentials", profile("second"));
    std::filesystem::last_write_time(file, time);
    expectKeys(chain.GetAWSCredentials(), "first", "secret-of-first");
}

TEST_F(CredentialsChain, FollowsTheCredentialsFileToAnotherName) {
    const auto file = write(".aws/credentials", profile("home"));
    const auto other = write("other", profile("other"));
    std::filesystem::last_write_time(other, std::filesystem::last_write_time(file));
    ZRCredentialsProviderChain chain;
    expectKeys(chain.GetAWSCredentials(), "home", "secret-of-home");
    environment.set("AWS_SHARED_CREDENTIALS_FILE", other.string());
    expectKeys(chain.GetAWSCredentials(), "other", "secret-of-other");
}

TEST_F(CredentialsChain, AsksTheMetadataServiceAnewOnceTheFileChanged) {
    const auto file = write(".aws/credentials", "");
    ZRCredentialsProviderChain chain;
    chain.GetAWSCredentials();
    const auto once = asked();
    ASSERT_GT(once, 0u);
    touch(file);
    chain.GetAWSCredentials();
    EXPECT_GT(asked(), once);
}

TEST_F(CredentialsChain, ThrowsWhatTheHostsTextFunctionsThrow) {
    ZRCredentialsProviderChain chain;
    environment.set("AWS_SHARED_CREDENTIALS_FILE", "\xFF");
    EXPECT_THROW(chain.GetAWSCredentials(), fl::i18n::conversion_error);
    EXPECT_THROW(ZRCredentialsProviderChain(), fl::i18n::conversion_error);
    environment.unset("AWS_SHARED_CREDENTIALS_FILE");
    write(".aws/credentials", profile("file"));  // new, so a writer must get the lock
    expectKeys(chain.GetAWSCredentials(), "file", "secret-of-file");
}

TEST_F(CredentialsChain, ServesManyThreadsWhileTheFileChanges) {
    const auto file = write(".aws/credentials", profile("key"));
    ZRCredentialsProviderChain chain;
    const auto ask = [&] {
        for (int i = 0; i < 10; ++i)
            expectKeys(chain.GetAWSCredentials(), "key", "secret-of-key");
    };
    // A change that no thread saw in its own round is there for all threads at the start of the next.
    for (int round = 0; round < 50; ++round) {
        std::vector<std::future<void>> threads;
        for (int i = 0; i < 4; ++i)
            threads.push_back(std::async(std::launch::async, ask));
        touch(file);
        for (auto& thread : threads)
            thread.get();
    }
}

/// A metadata service that has credentials.
class CredentialsOfTheMachine : public FactoryTest {
protected:
    CredentialsOfTheMachine() {
        // The SDK asks for the credentials twice, and then where the machine is.
        for (int round = 0; round < 2; ++round) {
            metadata.expect({Step::send(httpReply(200, {}, "the-token"))});
            metadata.expect({Step::send(httpReply(200, {}, "the-role"))});
            metadata.expect({Step::send(httpReply(
                200, {}, R"({"Code": "Success", "AccessKeyId": "machine", "SecretAccessKey": "secret",
                             "Token": "session", "Expiration": "2099-01-01T00:00:00Z"})"))});
        }
        metadata.expect({Step::send(httpReply(200, {}, "eu-west-3a"))});
    }

    ScriptedServer metadata;
    SdkOnAMachine sdk{environment, "http://" + metadata.endpoint()};
};

TEST_F(CredentialsOfTheMachine, AreTakenLastAndKept) {
    environment.set("AWS_ACCESS_KEY_ID", "key without secret");
    ZRCredentialsProviderChain chain;
    for (int i = 0; i < 3; ++i)
        expectKeys(chain.GetAWSCredentials(), "machine", "secret", "session");
    ASSERT_EQ(metadata.requests().size(), 7u);
    EXPECT_EQ(metadata.unexpectedRequests(), 0u);
    EXPECT_EQ(metadata.requests()[0].method, "PUT");
    EXPECT_EQ(metadata.requests()[0].target, "/latest/api/token");
    EXPECT_EQ(metadata.requests()[2].header("x-aws-ec2-metadata-token"), "the-token");
}

TEST_F(FactoryTest, GivesNothingRatherThanTheHalfThatAMachineHas) {
    const MetadataService metadata(MetadataService::Manner::Right, "");
    const SdkOnAMachine sdk{environment, metadata.url()};
    ZRCredentialsProviderChain chain;
    expectKeys(chain.GetAWSCredentials(), "", "");
    EXPECT_GT(metadata.asked(), 0u);
}

class CountingProvider : public Aws::Auth::AWSCredentialsProvider {
public:
    Aws::Auth::AWSCredentials GetAWSCredentials() override {
        ++asked;
        if (fails) throw std::runtime_error("no credentials");
        return {"key", "secret"};
    }

    int asked = 0;
    bool fails = false;
};

/// Why the metadata service may be asked while a bucket is opened, although nothing is signed yet.
TEST(SdkClient, AsksForCredentialsWhileItIsMade) {
    const Sdk sdk;
    const auto provider = std::make_shared<CountingProvider>();
    const auto client = storage::s3provider::makeS3Client(
        provider, std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>(), {});
    EXPECT_EQ(provider->asked, 3);
    provider->fails = true;
    EXPECT_THROW(storage::s3provider::makeS3Client(
                     provider, std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>(), {}),
                 std::runtime_error);
    EXPECT_EQ(provider->asked, 4);
}

}  // namespace
