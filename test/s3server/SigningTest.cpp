#include <gmock/gmock.h>

#include "Client.hpp"
#include "s3server/Server.hpp"

namespace s3server::test {
namespace {

using testing::HasSubstr;
using testing::Not;

const Headers unsignedPayload{{"x-amz-content-sha256", "UNSIGNED-PAYLOAD"}};

/// The requests are signed by libcurl, which nobody here wrote.
class Signing : public testing::Test {
protected:
    Signing() {
        server.createBucket("demo");
        server.createBucket("paris", "eu-west-3");
        server.putObject("demo", "k", "hello");
        server.putObject("paris", "k", "bonjour");
    }
    Answer get(const std::string& target, const std::string& region = "us-east-1",
               const Credentials& keys = defaultCredentials) {
        Client client(server.endpoint());
        client.signAs(keys.accessKey, keys.secretKey, region);
        return client.get(target, unsignedPayload);
    }

    Server server;
};

TEST_F(Signing, ByTheRightKeyIsAccepted) {
    EXPECT_EQ(get("/demo/k").body, "hello");
    EXPECT_EQ(get("/demo?list-type=2&prefix=k").status, 200);
    EXPECT_EQ(get("/paris/k", "eu-west-3").body, "bonjour");
}

TEST_F(Signing, OfAnUploadIsAccepted) {
    Client client(server.endpoint());
    client.signAs(defaultCredentials.accessKey, defaultCredentials.secretKey, "us-east-1");
    EXPECT_EQ(client.put("/demo/new", "x", unsignedPayload).status, 200);
    EXPECT_EQ(server.object("demo", "new"), "x");
}

TEST_F(Signing, ByAnotherSecretIsRefusedWithoutATrace) {
    const Answer answer = get("/demo/k", "us-east-1", {defaultCredentials.accessKey, "another-secret", ""});
    EXPECT_EQ(answer.status, 403);
    EXPECT_EQ(answer.element("Code"), "SignatureDoesNotMatch");
    EXPECT_THAT(answer.body, Not(HasSubstr(defaultCredentials.secretKey)));
}

TEST_F(Signing, ByAnUnknownKeyIsRefused) {
    const Answer answer = get("/demo/k", "us-east-1", {"unknown", defaultCredentials.secretKey, ""});
    EXPECT_EQ(answer.status, 403);
    EXPECT_EQ(answer.element("Code"), "InvalidAccessKeyId");
    EXPECT_EQ(answer.element("AWSAccessKeyId"), "unknown");
}

TEST_F(Signing, IsNeeded) {
    const Answer answer = Client(server.endpoint()).get("/demo/k");
    EXPECT_EQ(answer.status, 403);
    EXPECT_EQ(answer.element("Code"), "AccessDenied");
}

TEST_F(Signing, ForAnotherRegionThanTheBucketsIsRefusedWithTheRightOne) {
    const Answer answer = get("/paris/k");
    EXPECT_EQ(answer.status, 400);
    EXPECT_EQ(answer.element("Code"), "AuthorizationHeaderMalformed");
    EXPECT_EQ(answer.element("Region"), "eu-west-3");
    EXPECT_EQ(
        answer.element("Message"),
        "The authorization header is malformed; the region 'us-east-1' is wrong; expecting 'eu-west-3'");
    EXPECT_EQ(answer.header("x-amz-bucket-region"), "eu-west-3");
}

TEST_F(Signing, ForAnyRegionWillDoToAskForABucketsLocation) {
    EXPECT_THAT(get("/paris?location=").body, HasSubstr(">eu-west-3<"));
    EXPECT_EQ(get("/", "ap-south-1").status, 200);
}

TEST_F(Signing, IsJudgedByTheServersClock) {
    Options late;
    late.clock = [] { return std::chrono::system_clock::now() + std::chrono::hours(1); };
    Server lateServer(late);
    Client client(lateServer.endpoint());
    client.signAs(defaultCredentials.accessKey, defaultCredentials.secretKey, "us-east-1");
    const Answer answer = client.get("/", unsignedPayload);
    EXPECT_EQ(answer.status, 403);
    EXPECT_EQ(answer.element("Code"), "RequestTimeTooSkewed");
    EXPECT_EQ(answer.element("MaxAllowedSkewMilliseconds"), "900000");
}

TEST_F(Signing, ThatIsWrongStoresNothing) {
    Client client(server.endpoint());
    client.signAs(defaultCredentials.accessKey, "another-secret", "us-east-1");
    EXPECT_EQ(client.put("/demo/new", std::string(std::size_t{1} << 20U, 'x'), unsignedPayload).status, 403);
    EXPECT_EQ(server.object("demo", "new"), std::nullopt);
    EXPECT_EQ(client.get("/demo/k", unsignedPayload).status, 403) << "the connection is still good";
    EXPECT_EQ(server.connections(), 1u);
}

}  // namespace
}  // namespace s3server::test
