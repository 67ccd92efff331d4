#include <array>
#include <chrono>
#include <storage/cloudprovider/CloudException.hpp>

#include "S3ProviderFactoryV2.hpp"
#include "support/plugin/CloudFailure.hpp"
#include "support/plugin/FactoryTest.hpp"
#include "support/servers/ScriptedServer.hpp"

using namespace testsupport;
using foundation::storage::provider::IProvider;
using foundation::storage::provider::StorageIRI;
using storage::cloudprovider::InvalidLocationException;
using storage::cloudprovider::PermissionDeniedException;
using storage::s3provider::S3ProviderFactoryV2;
using ::testing::HasSubstr;

namespace {

Script refusedWith(int status, const std::string& code) {
    return {
        Step::send(httpReply(status, {}, "<Error><Code>" + code + "</Code><Message>no</Message></Error>"))};
}

/// Providers of a server that the environment names.
class EndpointOverride : public FactoryTest {
protected:
    EndpointOverride() {
        environment.set("ZR_AWS_ENDPOINT_OVERRIDE", "http://" + server.endpoint());
        environment.set("AWS_ACCESS_KEY_ID", "key");
        environment.set("AWS_SECRET_ACCESS_KEY", "secret");
        // Requests that go elsewhere by mistake are to fail soon.
        tryOnce();
    }

    void TearDown() override {
        EXPECT_EQ(server.unusedScripts(), 0u);
        EXPECT_EQ(server.unexpectedRequests(), 0u);
    }

    std::shared_ptr<IProvider> open() { return factory.createProvider(StorageIRI(u"s3://bucket")); }

    SeenRequest lastRequest() const {
        const auto requests = server.requests();
        return requests.empty() ? SeenRequest() : requests.back();
    }

    /// Asks for the status of a file with one request.
    SeenRequest requestOfStat() {
        server.expect({Step::send(httpReply(200))});
        EXPECT_TRUE(open()->stat(u"/file"));
        return lastRequest();
    }

    /// Reads a file that the server refuses that often.
    void readInVain(int refusals) {
        server.expect({Step::send(httpReply(200, {{"Content-Length", "7"}}))});
        const auto reader = open()->openRead(u"/file");
        for (int i = 0; i < refusals; ++i)
            server.expect(refusedWith(403, "AccessDenied"));
        std::array<char, 7> content{};
        EXPECT_THROW(reader->read(0, content.data(), content.size()), PermissionDeniedException);
    }

    ScriptedServer server;
    S3ProviderFactoryV2 factory{nullptr};
};

TEST_F(EndpointOverride, IsWhereRequestsGo) {
    const auto request = requestOfStat();
    EXPECT_EQ(request.method, "HEAD");
    EXPECT_EQ(request.target, "/bucket/file");
    EXPECT_EQ(request.header("Host"), server.endpoint());
    EXPECT_THAT(request.header("Authorization"), HasSubstr("/us-east-1/s3/aws4_request"));
}

// The SDK would look for "[profile work]", so the region can only be the one that the factory found.
TEST_F(EndpointOverride, IsAskedForTheChosenRegion) {
    write(".aws/config", "[work]\nregion = eu-north-1\n");
    environment.set("AWS_PROFILE", "work");
    const auto request = requestOfStat();
    EXPECT_EQ(request.target, "/bucket/file");
    EXPECT_THAT(request.header("Authorization"), HasSubstr("/eu-north-1/s3/aws4_request"));
    EXPECT_EQ(factory.getCachedBucketRegion("bucket"), "eu-north-1");
}

TEST_F(EndpointOverride, IsReachedAsTheEnvironmentSaysAtEachOpening) {
    environment.set("ZR_AWS_ENDPOINT_OVERRIDE", server.endpoint());
    open();  // by HTTPS
    environment.set("ZR_AWS_SCHEME", "HTTP");
    EXPECT_EQ(requestOfStat().method, "HEAD");
}

TEST_F(EndpointOverride, IsntAskedForTheRegionThatAmazonTold) {
    factory.storeBucketRegion("bucket", "eu-north-1");
    EXPECT_THAT(requestOfStat().header("Authorization"), HasSubstr("/us-east-1/s3/aws4_request"));
}

TEST_F(EndpointOverride, IsAskedForContentAsOftenAsTheEnvironmentSays) {
    environment.set("ZR_AWS_GETDATA_ATTEMPTS", "2");
    environment.set("ZR_AWS_RETRYTIMEMS", "0");
    readInVain(2);
}

TEST_F(EndpointOverride, IsLeftInPeaceAsLongAsTheEnvironmentSays) {
    constexpr std::chrono::milliseconds pause(1500);  // longer than the default
    environment.set("ZR_AWS_GETDATA_ATTEMPTS", "1");
    environment.set("ZR_AWS_RETRYTIMEMS", std::to_string(pause.count()));
    const auto begin = std::chrono::steady_clock::now();
    readInVain(1);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, pause);
}

TEST_F(EndpointOverride, IsAskedWhetherItHasTheBucketForItsRoot) {
    const auto provider = open();
    server.expect({Step::send(httpReply(404))});
    server.expect(refusedWith(404, "NoSuchBucket"));
    expectFailure<InvalidLocationException>(u"invalid_bucket", [&] { provider->stat(u"/"); });
    EXPECT_EQ(lastRequest().target, "/bucket?location");
}

}  // namespace
