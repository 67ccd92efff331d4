#include <algorithm>
#include <s3server/Server.hpp>

#include "S3ProviderFactoryV2.hpp"
#include "support/Relay.hpp"
#include "support/TestCertificate.hpp"
#include "unit/FactoryTest.hpp"

using namespace testsupport;
using foundation::storage::provider::IProvider;
using foundation::storage::provider::StorageIRI;
using storage::s3provider::S3ProviderFactoryV2;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// Everything as it is without a setting: HTTPS, Amazon's host names with the bucket in front, the region
/// that S3 tells. Only that a proxy leads all of Amazon's names to a server in this process, whose
/// certificate bears them.
class DefaultPath : public FactoryTest {
protected:
    DefaultPath() {
        environment.unset("ZR_AWS_PROXY");
        environment.set("ZR_PROXY_HOST", "127.0.0.1");
        environment.set("ZR_PROXY_PORT", std::to_string(proxy.port()));
        environment.set("ZR_ROOT_CERT_FILE", authority.caFile().string());
        environment.set("AWS_ACCESS_KEY_ID", s3server::defaultCredentials.accessKey);
        environment.set("AWS_SECRET_ACCESS_KEY", s3server::defaultCredentials.secretKey);
        amazon.createBucket("travelled", "eu-west-3");
    }

    s3server::Options withCertificate() {
        const auto files = authority.issue({"*.s3.us-east-2.amazonaws.com", "*.s3.eu-west-3.amazonaws.com"});
        s3server::Options options;
        options.tls = s3server::TlsFiles{files.certificate, files.key};
        return options;
    }

    static void put(IProvider& provider, const std::u16string& path, const std::string& content) {
        const auto writer = provider.openWrite(path);
        writer->write(content.data(), content.size());
        writer->commit();
    }

    static std::string get(IProvider& provider, const std::u16string& path) {
        const auto reader = provider.openRead(path);
        std::string content(reader->size(), '\0');
        content.resize(reader->read(0, content.data(), content.size()));
        return content;
    }

    TestAuthority authority;
    s3server::Server amazon{withCertificate()};
    Relay proxy{amazon.port(), Relay::Opening::Connect};
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
        EXPECT_THAT(requests[i].header("authorization").value_or(""),
                    ::testing::HasSubstr("/eu-west-3/s3/aws4_request"));
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

TEST_F(DefaultPath, EndsAtACertificateOfAnUnknownAuthority) {
    const TestAuthority other;
    environment.set("ZR_ROOT_CERT_FILE", other.caFile().string());
    environment.set("ZR_ROOT_CERT_PATH", (home.path() / "none").string());
    environment.set("AWS_REGION", "eu-west-3");
    const auto provider = factory.createProvider(StorageIRI(u"s3://travelled/"));
    EXPECT_THROW(provider->stat(u"/file"), std::exception);
    EXPECT_THAT(amazon.requests(), IsEmpty());
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

    write(".aws/credentials", profile(s3server::defaultCredentials.accessKey));
    std::filesystem::last_write_time(file, std::filesystem::last_write_time(file) + std::chrono::seconds(10));
    put(*provider, u"file", "content");
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
