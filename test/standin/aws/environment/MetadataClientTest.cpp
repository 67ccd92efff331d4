#include "core/MetadataClient.hpp"

#include "EnvironmentTest.hpp"
#include "support/servers/HeldPort.hpp"

using standin::aws::MetadataClient;
using ::testing::Each;
using ::testing::ElementsAre;
using testsupport::Script;
using testsupport::ScriptedServer;
using testsupport::SeenRequest;
using testsupport::Step;

namespace {

const std::string tokenHeader = "x-aws-ec2-metadata-token";
const std::string askForToken = "PUT /latest/api/token";
const std::string askForRoles = "GET /latest/meta-data/iam/security-credentials";
const std::string askForRole = askForRoles + "/role";
const std::string askForZone = "GET /latest/meta-data/placement/availability-zone";

constexpr std::size_t mebibyte = 1024UL * 1024;

/// The token that each request brought.
std::vector<std::string> tokens(const ScriptedServer& server) {
    std::vector<std::string> tokens;
    for (const SeenRequest& request : server.requests())
        tokens.push_back(request.hasHeader(tokenHeader) ? request.header(tokenHeader) : "none");
    return tokens;
}

class MetadataService : public EnvironmentTest {
protected:
    void expect(const std::vector<Script>& scripts) {
        for (const Script& script : scripts)
            server.expect(script);
    }

    ScriptedServer server;
    MetadataClient client{server.endpoint()};
};

TEST_F(MetadataService, IsAskedForATokenTheRoleAndItsCredentials) {
    expect(metadata::conversation("the credentials"));
    EXPECT_EQ(client.credentials(), "the credentials");
    EXPECT_THAT(requestLines(server), ElementsAre(askForToken, askForRoles, askForRole));
    EXPECT_THAT(tokens(server), ElementsAre("none", "token", "token"));
    EXPECT_EQ(server.requests()[0].header(tokenHeader + "-ttl-seconds"), "21600");
}

TEST_F(MetadataService, IsAskedForTheFirstOfSeveralRoles) {
    expect({metadata::text("token"), metadata::text("role\nother\n"), metadata::text("the credentials")});
    EXPECT_EQ(client.credentials(), "the credentials");
    EXPECT_EQ(requestLines(server).back(), askForRole);
}

TEST_F(MetadataService, HasNoRole) {
    expect({metadata::text("token"), metadata::text("\n")});
    EXPECT_EQ(client.credentials(), "");
    EXPECT_THAT(requestLines(server), ElementsAre(askForToken, askForRoles));
}

TEST_F(MetadataService, IsAskedWithoutTokenFromThenOnWhenItGivesNone) {
    expect({metadata::status(404), metadata::text("role"), metadata::text("the credentials"),
            metadata::text("role"), metadata::text("the credentials")});
    client.credentials();
    EXPECT_EQ(client.credentials(), "the credentials");
    EXPECT_THAT(requestLines(server),
                ElementsAre(askForToken, askForRoles, askForRole, askForRoles, askForRole));
    EXPECT_THAT(tokens(server), Each("none"));
}

TEST_F(MetadataService, IsAskedForNothingMoreWhenItFindsTheWishForATokenWrong) {
    expect({metadata::status(400)});
    EXPECT_EQ(client.credentials(), "");
    EXPECT_THAT(requestLines(server), ElementsAre(askForToken));
}

TEST_F(MetadataService, IsAskedTwiceWhenItFailsForAPassingReason) {
    expect({metadata::status(503),
            metadata::text("token"),
            metadata::status(500),
            metadata::text("role"),
            {Step::close()},
            metadata::text("the credentials")});
    EXPECT_EQ(client.credentials(), "the credentials");
    EXPECT_THAT(requestLines(server),
                ElementsAre(askForToken, askForToken, askForRoles, askForRoles, askForRole, askForRole));
}

TEST_F(MetadataService, GetsNoTokenThatWouldMakeHeaders) {
    for (const std::string& token :
         {std::string("a\r\nx-evil: 1"), std::string("a\nx-evil: 1"), std::string("a\rx-evil: 1"),
          std::string("a\0b", 3), std::string("a\x7f")}) {
        ScriptedServer service(
            {metadata::text(token), metadata::text("role"), metadata::text("the credentials")});
        EXPECT_EQ(MetadataClient(service.endpoint()).credentials(), "the credentials");
        EXPECT_THAT(tokens(service), ElementsAre("none", "none", "none"));
        for (const SeenRequest& request : service.requests())
            EXPECT_FALSE(request.hasHeader("x-evil"));
    }
}

TEST_F(MetadataService, IsAskedForTheRoleByItsWholeName) {
    const std::pair<const char*, const char*> names[] = {
        {"a=b,c@d", "a=b,c@d"},         {"../../user-data", "..%2F..%2Fuser-data"},
        {"role?a=b", "role%3Fa=b"},     {"role#a", "role%23a"},
        {"role other", "role%20other"}, {"%2e%2e", "%252e%252e"},
    };
    for (const auto& [name, inPath] : names) {
        ScriptedServer service(
            {metadata::text("token"), metadata::text(name), metadata::text("credentials")});
        EXPECT_EQ(MetadataClient(service.endpoint()).credentials(), "credentials");
        EXPECT_EQ(requestLines(service).back(), askForRoles + "/" + inPath);
    }
}

TEST_F(MetadataService, IsGivenUpWhenItIsSilent) {
    expect({{Step::sleep(std::chrono::minutes(1))},
            metadata::text("token"),
            metadata::text("role"),
            metadata::text("the credentials")});
    EXPECT_EQ(client.credentials(), "the credentials");
    EXPECT_THAT(requestLines(server), ElementsAre(askForToken, askForToken, askForRoles, askForRole));
}

TEST_F(MetadataService, IsGivenUpWhenItDrips) {
    const Script dripping{Step::send("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n"),
                          Step::drip(std::string(1000, 'x'), std::chrono::milliseconds(50))};
    expect({metadata::text("token"), dripping, metadata::text("role"), metadata::text("the credentials")});
    EXPECT_EQ(client.credentials(), "the credentials");
    EXPECT_THAT(requestLines(server), ElementsAre(askForToken, askForRoles, askForRoles, askForRole));
}

TEST_F(MetadataService, IsGivenUpWhenItNeverEnds) {
    constexpr std::size_t muchMoreThanIsRead = 16;
    const Script endless{
        Step::send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"),
        Step::sendRepeat("100000\r\n" + std::string(mebibyte, 'x') + "\r\n", muchMoreThanIsRead),
        Step::send("0\r\n\r\n")};
    expect({metadata::text("token"), metadata::text("role"), endless, endless});
    EXPECT_EQ(client.credentials(), "");
    EXPECT_EQ(server.unexpectedRequests(), 0U);
}

TEST_F(MetadataService, AnswersWithAMebibyteAtMost) {
    expect({metadata::text("token"), metadata::text("role"), metadata::text(std::string(mebibyte, 'x'))});
    EXPECT_EQ(client.credentials().size(), mebibyte);
}

TEST_F(MetadataService, MayBeAbsent) {
    const testsupport::ClosedPort closed;
    EXPECT_EQ(MetadataClient("127.0.0.1:" + std::to_string(closed.number())).credentials(), "");
}

TEST_F(MetadataService, TakesNoTokenToAnotherServer) {
    ScriptedServer other({metadata::text("role")});
    const std::string elsewhere = "http://" + other.endpoint() + "/roles";
    expect({metadata::text("token"), {Step::send(testsupport::httpReply(307, {{"Location", elsewhere}}))}});
    expect({metadata::text("the credentials")});
    EXPECT_EQ(client.credentials(), "the credentials");
    EXPECT_THAT(tokens(other), ElementsAre("none"));
    EXPECT_THAT(tokens(server), ElementsAre("none", "token", "token"));
}

TEST_F(MetadataService, IsNotAskedAtAPlaceThatIsNone) {
    const std::string here = server.endpoint();
    for (const std::string& place :
         {"user@" + here, "ftp://" + here, "http://" + here + "?a", "http://" + here + "#a",
          "http://other@" + here, "http:// " + here, std::string("http://"), std::string()})
        EXPECT_EQ(MetadataClient(place).credentials(), "") << place;
    EXPECT_EQ(server.connections(), 0U);
}

TEST_F(MetadataService, IsAskedForTheRegionUntilItIsKnown) {
    expect(metadata::conversation("the credentials"));
    expect({metadata::status(404)});
    expect(metadata::conversation("the credentials"));
    expect({metadata::text("eu-west-3b")});
    EXPECT_EQ(client.region(), "");
    EXPECT_EQ(client.region(), "eu-west-3");
    EXPECT_EQ(client.region(), "eu-west-3");
    EXPECT_EQ(requestLines(server).back(), askForZone);
    EXPECT_EQ(server.unexpectedRequests(), 0U);
}

TEST(RegionOfAZone, EndsWithItsFirstNumber) {
    EXPECT_EQ(standin::aws::regionOfZone("eu-west-1b"), "eu-west-1");
    EXPECT_EQ(standin::aws::regionOfZone("us-west-2-lax-1a"), "us-west-2");
    EXPECT_EQ(standin::aws::regionOfZone("us-gov-west-12"), "us-gov-west-12");
    EXPECT_EQ(standin::aws::regionOfZone("nowhere"), "nowhere");
    EXPECT_EQ(standin::aws::regionOfZone(""), "");
}

class MetadataEndpoint : public EnvironmentTest {
protected:
    MetadataEndpoint() { environment.unset("AWS_EC2_METADATA_SERVICE_ENDPOINT"); }
};

TEST_F(MetadataEndpoint, IsTheLinkLocalAddress) {
    EXPECT_EQ(standin::aws::metadataEndpoint(), "http://169.254.169.254");
}

TEST_F(MetadataEndpoint, IsThatOfTheOtherProtocolOnDemand) {
    environment.set("AWS_EC2_METADATA_SERVICE_ENDPOINT_MODE", "IPv6");
    EXPECT_EQ(standin::aws::metadataEndpoint(), "http://[fd00:ec2::254]");
}

TEST_F(MetadataEndpoint, IsTheOneThatTheEnvironmentNames) {
    environment.set("AWS_EC2_METADATA_SERVICE_ENDPOINT_MODE", "IPv6");
    environment.set("AWS_EC2_METADATA_SERVICE_ENDPOINT", "http://127.0.0.1:1338");
    EXPECT_EQ(standin::aws::metadataEndpoint(), "http://127.0.0.1:1338");
}

}  // namespace
