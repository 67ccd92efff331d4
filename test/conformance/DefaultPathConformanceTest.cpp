#include <algorithm>

#include "DiagnosticRecord.hpp"
#include "S3ProviderFactoryV2.hpp"
#include "conformance/AmazonTest.hpp"

using namespace testsupport;
using storage::s3provider::S3ProviderFactoryV2;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

/// Everything as it is without a setting: HTTPS, Amazon's host names with the bucket in front, the region
/// that S3 tells.
class DefaultPath : public AmazonTest {
protected:
    S3ProviderFactoryV2 factory{nullptr};
};

TEST_F(DefaultPath, LeadsFromAnIriToAnObject) {
    const auto provider = factory.createProvider(StorageIRI(u"s3://travelled/folder/file"));
    EXPECT_EQ(factory.getCachedBucketRegion("travelled"), "eu-west-3");
    put(*provider, u"/folder/file", "content");
    EXPECT_EQ(get(*provider, u"/folder/file"), "content");
    EXPECT_EQ(amazon.object("travelled", "folder/file"), "content");

    const auto requests = amazon.requests();
    ASSERT_GE(requests.size(), 3u);
    EXPECT_EQ(requests[0].operation, "GetBucketLocation");
    EXPECT_EQ(requests[0].header("host"), "travelled.s3.us-east-2.amazonaws.com");
    for (std::size_t i = 1; i < requests.size(); ++i) {
        EXPECT_EQ(requests[i].header("host"), "travelled.s3.eu-west-3.amazonaws.com");
        EXPECT_THAT(signatureOf(requests[i]), HasSubstr("/eu-west-3/s3/aws4_request"));
        EXPECT_EQ(requests[i].header("x-amz-content-sha256"), "UNSIGNED-PAYLOAD");
        EXPECT_EQ(requests[i].status / 100, 2);
    }
    EXPECT_THAT(proxy.tunnels(), ElementsAre("travelled.s3.us-east-2.amazonaws.com:443",
                                             "travelled.s3.eu-west-3.amazonaws.com:443"));
}

TEST_F(DefaultPath, AsksForABucketsRegionOnce) {
    const StorageIRI iri(u"s3://travelled");
    factory.createProvider(iri);
    put(*factory.createProvider(iri), u"file", "content");
    const auto requests = amazon.requests();
    EXPECT_EQ(std::count_if(requests.begin(), requests.end(),
                            [](const auto& request) { return request.operation == "GetBucketLocation"; }),
              1);
}

TEST_F(DefaultPath, GoesThroughTheProxyThoughTheBucketsHostIsListedAsOneWithout) {
    environment.set("AWS_REGION", "eu-west-3");
    environment.set("no_proxy", "travelled.s3.eu-west-3.amazonaws.com");
    EXPECT_TRUE(factory.createProvider(StorageIRI(u"s3://travelled"))->stat(u"/"));
    EXPECT_THAT(proxy.tunnels(), ElementsAre("travelled.s3.eu-west-3.amazonaws.com:443"));
}

/// Authorities to trust, as the environment names them; empty: the system's.
class TrustedAuthorities : public DefaultPath {
protected:
    TrustedAuthorities() {
        environment.set("AWS_REGION", "eu-west-3");
        // A refused certificate counts as a failing network, which the default mode tries for half a minute.
        tryOnce();
    }

    void trust(const std::filesystem::path& file, const std::filesystem::path& folder) {
        environment.set("ZR_ROOT_CERT_FILE", file.string());
        environment.set("ZR_ROOT_CERT_PATH", folder.string());
    }

    void expectRefusal() {
        const auto provider = factory.createProvider(StorageIRI(u"s3://travelled/"));
        LogCapture failures(clientChannel, storage::s3provider::LogFailedRequests);
        EXPECT_THROW(provider->stat(u"/file"), std::exception);
        EXPECT_THAT(failures.texts(), Contains(HasSubstr("curlCode: 60, ")));
        EXPECT_THAT(proxy.tunnels(), Not(IsEmpty()));
        EXPECT_THAT(amazon.requests(), IsEmpty());
    }

    TestAuthority stranger;
};

TEST_F(TrustedAuthorities, AreThoseOfAFile) {
    trust(authority.caFile(), {});
    put(*factory.createProvider(StorageIRI(u"s3://travelled")), u"file", "content");
    EXPECT_EQ(amazon.object("travelled", "file"), "content");
}

TEST_F(TrustedAuthorities, AreThoseOfAFolder) {
    trust({}, authority.caFolder());
    put(*factory.createProvider(StorageIRI(u"s3://travelled")), u"file", "content");
    EXPECT_EQ(amazon.object("travelled", "file"), "content");
}

TEST_F(TrustedAuthorities, AreNoneButThoseNamed) {
    trust(stranger.caFile(), stranger.caFolder());
    expectRefusal();
}

TEST_F(TrustedAuthorities, AreTheSystemsWhereNoneAreNamed) {
    trust({}, {});
    expectRefusal();
}

TEST_F(DefaultPath, SignsWithTheKeysOfTheFileAsItIsNow) {
    const auto profile = [](const std::string& key) {
        return "[default]\naws_access_key_id = " + key +
               "\naws_secret_access_key = " + s3server::defaultCredentials.secretKey + "\n";
    };
    environment.unset("AWS_ACCESS_KEY_ID");
    environment.unset("AWS_SECRET_ACCESS_KEY");
    const auto file = write(".aws/credentials", profile("somebody-else"));
    environment.set("AWS_REGION", "eu-west-3");
    const auto provider = factory.createProvider(StorageIRI(u"s3://travelled/"));
    EXPECT_THROW(put(*provider, u"file", "content"), std::exception);
    EXPECT_THAT(signatureOf(amazon.requests().back()), HasSubstr("Credential=somebody-else/"));

    write(".aws/credentials", profile(s3server::defaultCredentials.accessKey));
    std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) + std::chrono::seconds(10));
    put(*provider, u"file", "content");
    EXPECT_THAT(signatureOf(amazon.requests().back()),
                HasSubstr("Credential=" + s3server::defaultCredentials.accessKey + "/"));
    EXPECT_EQ(amazon.object("travelled", "file"), "content");
}

TEST_F(DefaultPath, OutlivesTheFactory) {
    auto dying = std::make_unique<S3ProviderFactoryV2>(nullptr);
    const auto provider = dying->createProvider(StorageIRI(u"s3://travelled/"));
    dying.reset();
    put(*provider, u"file", "content");
    EXPECT_EQ(get(*provider, u"file"), "content");
}

}  // namespace
