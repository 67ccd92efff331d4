#include <aws/s3/model/HeadBucketRequest.h>

#include <chrono>
#include <fl/i18n.hpp>
#include <future>
#include <set>
#include <sstream>

#include "AwsS3ClientFactory.hpp"
#include "DiagnosticRecord.hpp"
#include "S3CloudClient.hpp"
#include "S3ProviderFactoryV2.hpp"
#include "support/plugin/FactoryTest.hpp"
#include "support/servers/ScriptedServer.hpp"

using namespace testsupport;
using namespace storage::s3provider;
using ::testing::AllOf;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::SizeIs;

namespace {

Script located(const std::string& constraint) {
    return {Step::send(httpReply(200, {}, "<LocationConstraint>" + constraint + "</LocationConstraint>"))};
}

const std::string refusal =
    httpReply(403, {}, "<Error><Code>AccessDenied</Code><Message>no</Message></Error>");

const Script deniedLocation = {Step::send(refusal)};

const Script emptyReply = {Step::send(httpReply(200))};

void headBucket(Aws::S3::S3Client& client) {
    Aws::S3::Model::HeadBucketRequest request;
    request.SetBucket("bucket");
    EXPECT_TRUE(client.HeadBucket(request).IsSuccess());
}

/// An empty one when nothing was asked.
SeenRequest lastRequest(const ScriptedServer& server) {
    const auto requests = server.requests();
    return requests.empty() ? SeenRequest() : requests.back();
}

/// A factory whose requests to Amazon all end at a scripted server, through a proxy of the environment and
/// with TLS as it is.
class ClientFactory : public FactoryTest {
protected:
    ClientFactory() {
        environment.unset("ZR_AWS_PROXY");
        environment.set("ZR_PROXY_HOST", "127.0.0.1");
        useProxy(amazon);
        environment.set("ZR_ROOT_CERT_FILE", authority.caFile().string());
        environment.set("AWS_ACCESS_KEY_ID", "key");
        environment.set("AWS_SECRET_ACCESS_KEY", "secret");
    }

    void TearDown() override {
        EXPECT_EQ(amazon.unusedScripts(), 0u);
        EXPECT_EQ(amazon.unexpectedRequests(), 0u);
    }

    /// For a server that answers to Amazon's names.
    ScriptedServer::Options behindTunnel() {
        ScriptedServer::Options options;
        options.certificate = authority.issue(
            {"*.s3.us-east-2.amazonaws.com", "*.s3.ap-south-1.amazonaws.com", "*.s3.eu-west-1.amazonaws.com",
             "*.s3.eu-west-2.amazonaws.com", "*.s3.us-east-1.amazonaws.com", "*.s3.amazonaws.com"});
        return options;
    }

    void useProxy(const ScriptedServer& server) {
        environment.set("ZR_PROXY_PORT", std::to_string(server.port()));
    }

    /// Requests for a bucket's location that arrived, as the host they went to.
    std::vector<std::string> lookups() const {
        std::vector<std::string> hosts;
        for (const auto& request : amazon.requests()) {
            if (request.method == "CONNECT") continue;
            EXPECT_EQ(request.target, "/?location");
            EXPECT_TRUE(request.tls);
            hosts.push_back(request.header("Host"));
        }
        return hosts;
    }

    TestAuthority authority;
    ScriptedServer amazon{{}, behindTunnel()};
    S3ProviderFactoryV2 factory{nullptr};
};

TEST_F(ClientFactory, TakesTheChosenRegionWithoutAskingAndRemembersIt) {
    environment.set("AWS_DEFAULT_REGION", "eu-west-1");
    environment.set("AWS_REGION", "us-west-2");
    const auto client = factory.getClientForBucket("bucket");
    EXPECT_EQ(client, factory.getClientForRegion("eu-west-1"));
    EXPECT_EQ(factory.getCachedBucketRegion("bucket"), "eu-west-1");
    EXPECT_THAT(amazon.requests(), IsEmpty());
}

TEST_F(ClientFactory, AsksS3ForARegionThatNobodyChoseOnce) {
    amazon.expect(located("eu-west-3"));
    const auto client = factory.getClientForBucket("bucket");
    EXPECT_EQ(factory.getCachedBucketRegion("bucket"), "eu-west-3");
    EXPECT_EQ(client, factory.getClientForRegion("eu-west-3"));
    EXPECT_EQ(client, factory.getClientForBucket("bucket"));
    EXPECT_THAT(lookups(), ElementsAre("bucket.s3.us-east-2.amazonaws.com"));
    EXPECT_THAT(lastRequest(amazon).header("Authorization"), HasSubstr("/us-east-2/s3/aws4_request"));
}

TEST_F(ClientFactory, AsksThroughTheLookupRegionThatIsSet) {
    environment.set("ZR_AWS_GETLOCATION_REGION", "ap-south-1");
    amazon.expect(located("eu-west-3"));
    factory.getClientForBucket("bucket");
    environment.set("ZR_AWS_GETLOCATION_REGION", "");
    amazon.expect(located("eu-west-3"));
    factory.getClientForBucket("other");
    EXPECT_THAT(lookups(),
                ElementsAre("bucket.s3.ap-south-1.amazonaws.com", "other.s3.us-east-2.amazonaws.com"));
}

TEST_F(ClientFactory, SendsItsLookupThroughTheClientOfTheLookupRegion) {
    amazon.expect(located("us-east-2"));
    const auto lookupClient = factory.getClientForRegion("us-east-2");
    const ScriptedServer proxyOfNewClients{{}, behindTunnel()};
    useProxy(proxyOfNewClients);
    EXPECT_EQ(factory.getClientForBucket("bucket"), lookupClient);
    EXPECT_THAT(lookups(), SizeIs(1));
    EXPECT_EQ(proxyOfNewClients.connections(), 0u);
}

TEST_F(ClientFactory, TakesABucketWithoutConstraintForOneInUsEast1) {
    amazon.expect({Step::send(httpReply(200, {}, "<LocationConstraint/>"))});
    const auto client = factory.getClientForBucket("bucket");
    EXPECT_EQ(factory.getCachedBucketRegion("bucket"), "us-east-1");
    EXPECT_EQ(client, factory.getClientForRegion("us-east-1"));
}

TEST_F(ClientFactory, UsesTheEmptyRegionsClientWhenS3DoesNotTell) {
    amazon.expect(deniedLocation);
    amazon.expect(deniedLocation);
    const auto client = factory.getClientForBucket("bucket");
    EXPECT_EQ(client, factory.getClientForRegion(""));
    EXPECT_EQ(factory.getCachedBucketRegion("bucket"), "");
    EXPECT_EQ(factory.getClientForBucket("other"), client);
    EXPECT_THAT(lookups(), SizeIs(2));
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST_F(ClientFactory, HandsTheRegionOnAsFarAsItIsKnown) {
    const LogCapture made{clientChannel, LogArguments};
    const foundation::storage::provider::StorageIRI iri(u"s3://bucket/");
    amazon.expect(deniedLocation);
    factory.createProvider(iri);
    amazon.expect(located("eu-west-3"));
    factory.createProvider(iri);
    EXPECT_THAT(made.texts(), ElementsAre(" m_bucket=bucket m_configuredRegion=",
                                          " m_bucket=bucket m_configuredRegion=eu-west-3"));
}

TEST_F(ClientFactory, AsksAgainWhenALookupFailed) {
    amazon.expect(deniedLocation);
    amazon.expect(located("eu-west-3"));
    factory.getClientForBucket("bucket");
    EXPECT_EQ(factory.getClientForBucket("bucket"), factory.getClientForRegion("eu-west-3"));
    EXPECT_EQ(factory.getCachedBucketRegion("bucket"), "eu-west-3");
}

TEST_F(ClientFactory, KeepsWhatOthersLearntWhileItsLookupFailed) {
    amazon.expect({Step::sendMade([&] {
        factory.storeBucketRegion("bucket", "eu-west-3");
        return refusal;
    })});
    EXPECT_EQ(factory.getClientForBucket("bucket"), factory.getClientForRegion(""));
    EXPECT_EQ(factory.getCachedBucketRegion("bucket"), "eu-west-3");
}

TEST_F(ClientFactory, PrefersAChoiceToWhatItRemembers) {
    amazon.expect(located("eu-west-3"));
    factory.getClientForBucket("bucket");
    environment.set("AWS_REGION", "us-west-2");
    EXPECT_EQ(factory.getClientForBucket("bucket"), factory.getClientForRegion("us-west-2"));
    EXPECT_EQ(factory.getCachedBucketRegion("bucket"), "us-west-2");
    environment.unset("AWS_REGION");
    EXPECT_EQ(factory.getClientForBucket("bucket"), factory.getClientForRegion("us-west-2"));
}

TEST_F(ClientFactory, PrefersWhatItRemembersToAsking) {
    factory.storeBucketRegion("bucket", "eu-north-1");
    factory.storeBucketRegion("bucket", "eu-south-1");
    EXPECT_EQ(factory.getClientForBucket("bucket"), factory.getClientForRegion("eu-south-1"));
    EXPECT_EQ(factory.getCachedBucketRegion("bucket"), "eu-south-1");
    EXPECT_EQ(factory.getCachedBucketRegion("Bucket"), "");
    EXPECT_THAT(amazon.requests(), IsEmpty());
}

TEST_F(ClientFactory, MakesAClientForAnEndpointEachTime) {
    environment.set("ZR_AWS_ENDPOINT_OVERRIDE", "http://127.0.0.1:1");
    const auto first = factory.getClientForBucket("bucket");
    EXPECT_NE(first, nullptr);
    EXPECT_NE(first, factory.getClientForBucket("bucket"));
    EXPECT_EQ(factory.getCachedBucketRegion("bucket"), "");
    EXPECT_THAT(amazon.requests(), IsEmpty());
    environment.unset("ZR_AWS_ENDPOINT_OVERRIDE");
    EXPECT_NE(first, factory.getClientForRegion(""));
    factory.storeBucketRegion("bucket", "eu-west-3");
    EXPECT_NE(first, factory.getClientForBucket("bucket"));
}

TEST_F(ClientFactory, RemembersAChosenRegionForAnEndpointToo) {
    environment.set("ZR_AWS_ENDPOINT_OVERRIDE", "http://127.0.0.1:1");
    environment.set("AWS_REGION", "eu-west-2");
    const auto client = factory.getClientForBucket("bucket");
    EXPECT_EQ(factory.getCachedBucketRegion("bucket"), "eu-west-2");
    environment.unset("ZR_AWS_ENDPOINT_OVERRIDE");
    EXPECT_NE(factory.getClientForRegion("eu-west-2"), client);
}

TEST_F(ClientFactory, SharesAClientAmongTheBucketsOfARegion) {
    amazon.expect(located("eu-west-3"));
    amazon.expect(located("eu-west-3"));
    amazon.expect(located("eu-west-1"));
    const auto client = factory.getClientForBucket("one");
    EXPECT_EQ(factory.getClientForBucket("two"), client);
    EXPECT_NE(factory.getClientForBucket("three"), client);
}

TEST_F(ClientFactory, TellsRegionsApartByteByByte) {
    EXPECT_NE(factory.getClientForRegion("eu-west-1"), factory.getClientForRegion("EU-WEST-1"));
}

TEST_F(ClientFactory, LeavesTheRegionToTheSdkWhenItIsUnknown) {
    amazon.expect(emptyReply);
    headBucket(*factory.getClientForRegion(""));
    EXPECT_EQ(lastRequest(amazon).header("Host"), "bucket.s3.us-east-1.amazonaws.com");
    EXPECT_THAT(lastRequest(amazon).header("Authorization"), HasSubstr("/us-east-1/s3/aws4_request"));
}

TEST_F(ClientFactory, LeavesTheEndpointOfUsEast1ToTheSdk) {
    amazon.expect(emptyReply);
    headBucket(*factory.getClientForRegion("us-east-1"));
    EXPECT_EQ(lastRequest(amazon).header("Host"), "bucket.s3.us-east-1.amazonaws.com");
    environment.set("AWS_S3_US_EAST_1_REGIONAL_ENDPOINT", "legacy");
    amazon.expect(emptyReply);
    headBucket(*S3ProviderFactoryV2(nullptr).getClientForRegion("us-east-1"));
    EXPECT_EQ(lastRequest(amazon).header("Host"), "bucket.s3.amazonaws.com");
}

/// What requests with a small body, with a part, with a document and without a body say of their payloads.
std::vector<std::string> payloadHashesOf(std::shared_ptr<Aws::S3::S3Client> client, ScriptedServer& server) {
    for (int i = 0; i < 3; ++i)
        server.expect(emptyReply);
    server.expect({Step::send(httpReply(200, {}, "<CompleteMultipartUploadResult/>"))});
    S3CloudClient bucket("bucket", std::move(client), {1, 0}, "eu-west-1");
    std::istringstream in("content");
    bucket.upload("key", in, 7);
    bucket.uploadPart("key", "id", {0, 0, 7, ""}, in);
    bucket.stat("key");
    bucket.completeMultipartUpload("key", "id", {});
    std::vector<std::string> hashes;
    for (const auto& request : server.requests())
        if (request.method != "CONNECT") hashes.push_back(request.header("x-amz-content-sha256"));
    return hashes;
}

TEST_F(ClientFactory, LeavesPayloadsUnsignedWhereTlsProtectsThem) {
    EXPECT_THAT(payloadHashesOf(factory.getClientForRegion("eu-west-1"), amazon),
                AllOf(SizeIs(4), Each("UNSIGNED-PAYLOAD")));
}

TEST_F(ClientFactory, SignsPayloadsWhereNothingElseProtectsThem) {
    const std::string ofContent = "ed7002b439e9ac845f22357d822bac1444730fbdb6016d3ec9432297b9ec9f73";
    const std::string ofNothing = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";
    ScriptedServer plain;
    environment.set("ZR_AWS_PROXY", "OFF");
    environment.set("ZR_AWS_ENDPOINT_OVERRIDE", "http://" + plain.endpoint());
    EXPECT_THAT(payloadHashesOf(factory.getClientForBucket("bucket"), plain),
                ElementsAre(ofContent, ofContent, ofNothing, MatchesRegex("[0-9a-f]{64}")));
}

TEST_F(ClientFactory, TakesNewSettingsForNewRegionsOnly) {
    factory.getClientForRegion("eu-west-1");
    const ScriptedServer otherProxy{{emptyReply}, behindTunnel()};
    useProxy(otherProxy);
    amazon.expect(emptyReply);
    headBucket(*factory.getClientForRegion("eu-west-1"));
    headBucket(*factory.getClientForRegion("eu-west-2"));
    EXPECT_EQ(lastRequest(amazon).header("Host"), "bucket.s3.eu-west-1.amazonaws.com");
    EXPECT_EQ(lastRequest(otherProxy).header("Host"), "bucket.s3.eu-west-2.amazonaws.com");
}

TEST_F(ClientFactory, KeepsARegionsClientWhateverTheEnvironmentBecomes) {
    environment.set("AWS_REGION", "eu-west-1");
    const auto client = factory.getClientForBucket("bucket");
    environment.set("ZR_AWS_SCHEME", "HTTP");
    EXPECT_EQ(factory.getClientForBucket("bucket"), client);
    EXPECT_EQ(makeClientConfiguration().scheme, Aws::Http::Scheme::HTTP);
    environment.set("AWS_REGION", "eu-west-2");
    EXPECT_NE(factory.getClientForBucket("bucket"), client);
}

TEST_F(ClientFactory, MakesOneClientOfARegionForManyThreads) {
    constexpr int threads = 16;
    auto options = behindTunnel();
    options.repeatLast = true;  // threads that open one bucket may ask for its region once or more
    const ScriptedServer locator{{located("eu-west-3")}, options};
    useProxy(locator);
    std::vector<std::future<std::shared_ptr<Aws::S3::S3Client>>> opened;
    for (int i = 0; i < threads; ++i) {
        opened.push_back(std::async(std::launch::async, [this, i] {
            return factory.getClientForBucket(i % 2 == 0 ? "bucket" : "bucket-" + std::to_string(i));
        }));
    }
    std::set<std::shared_ptr<Aws::S3::S3Client>> clients;
    for (auto& each : opened)
        clients.insert(each.get());
    EXPECT_THAT(clients, SizeIs(1));
    EXPECT_EQ(*clients.begin(), factory.getClientForRegion("eu-west-3"));
}

TEST_F(ClientFactory, OpensAKnownBucketWhileALookupStalls) {
    std::promise<void> arrived;
    std::promise<void> goOn;
    amazon.expect({Step::sendMade([&] {
        arrived.set_value();
        goOn.get_future().wait();
        return httpReply(200, {}, "<LocationConstraint>eu-west-3</LocationConstraint>");
    })});
    factory.storeBucketRegion("known", "eu-west-1");
    auto stalled = std::async(std::launch::async, [&] { return factory.getClientForBucket("unknown"); });
    arrived.get_future().wait();
    auto known = std::async(std::launch::async, [&] { return factory.getClientForBucket("known"); });
    EXPECT_EQ(known.wait_for(std::chrono::seconds(30)), std::future_status::ready);
    goOn.set_value();
    EXPECT_EQ(known.get(), factory.getClientForRegion("eu-west-1"));
    EXPECT_EQ(stalled.get(), factory.getClientForRegion("eu-west-3"));
}

TEST_F(ClientFactory, LeavesItsCacheAloneWhenAClientCannotBeMade) {
    environment.set("AWS_SHARED_CREDENTIALS_FILE", "\xFF");  // no text, so no chain
    EXPECT_THROW(factory.getClientForRegion("eu-west-3"), fl::i18n::conversion_error);
    environment.unset("AWS_SHARED_CREDENTIALS_FILE");
    EXPECT_NE(factory.getClientForRegion("eu-west-3"), nullptr);
}

}  // namespace
