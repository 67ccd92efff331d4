#include <gmock/gmock.h>

#include <stdexcept>
#include <string>

#include "Client.hpp"
#include "s3server/Server.hpp"

namespace s3server::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

Options openToAll() {
    Options options;
    options.checkSignatures = false;
    return options;
}

class Buckets : public testing::Test {
protected:
    Server server{openToAll()};
    Client client{server.endpoint()};
};

TEST_F(Buckets, AreMadeFoundListedAndDeleted) {
    EXPECT_EQ(client.put("/demo", "").status, 200);
    EXPECT_EQ(client.head("/demo").status, 200);
    EXPECT_THAT(client.get("/").elements("Name"), ElementsAre("demo"));
    EXPECT_EQ(client.remove("/demo").status, 204);
    EXPECT_EQ(client.head("/demo").status, 404);
    EXPECT_THAT(client.get("/").elements("Name"), IsEmpty());
}

TEST_F(Buckets, KeepTheirRegion) {
    const std::string configuration =
        "<CreateBucketConfiguration xmlns=\"http://s3.amazonaws.com/doc/2006-03-01/\">"
        "<LocationConstraint>eu-west-3</LocationConstraint></CreateBucketConfiguration>";
    EXPECT_EQ(client.put("/paris", configuration).status, 200);
    EXPECT_EQ(client.head("/paris").header("x-amz-bucket-region"), "eu-west-3");
    EXPECT_THAT(client.get("/paris?location").body, HasSubstr(">eu-west-3</LocationConstraint>"));
}

TEST_F(Buckets, OfTheFirstRegionHaveAnEmptyLocation) {
    client.put("/demo", "");
    const Answer answer = client.get("/demo?location");
    EXPECT_EQ(answer.status, 200);
    EXPECT_THAT(answer.body,
                HasSubstr("<LocationConstraint xmlns=\"http://s3.amazonaws.com/doc/2006-03-01/\">"
                          "</LocationConstraint>"));
    EXPECT_EQ(client.head("/demo").header("x-amz-bucket-region"), "us-east-1");
}

TEST_F(Buckets, OfTheOldEuropeanNameAreInIreland) {
    server.createBucket("old", "EU");
    EXPECT_THAT(client.get("/old?location").body, HasSubstr(">EU</LocationConstraint>"));
    EXPECT_EQ(client.head("/old").header("x-amz-bucket-region"), "eu-west-1");
}

TEST_F(Buckets, ThatDontExistAreNamedInTheError) {
    const Answer answer = client.get("/nothing?location");
    EXPECT_EQ(answer.status, 404);
    EXPECT_EQ(answer.element("Code"), "NoSuchBucket");
    EXPECT_EQ(answer.element("BucketName"), "nothing");
    EXPECT_EQ(answer.element("RequestId"), answer.header("x-amz-request-id"));
    EXPECT_EQ(answer.element("HostId"), answer.header("x-amz-id-2"));
    EXPECT_EQ(answer.header("content-type"), "application/xml");
}

TEST_F(Buckets, AreNotMadeTwice) {
    client.put("/demo", "");
    const Answer again = client.put("/demo", "");
    EXPECT_EQ(again.status, 409);
    EXPECT_EQ(again.element("Code"), "BucketAlreadyOwnedByYou");
}

TEST_F(Buckets, AreNotDeletedWithObjectsInside) {
    client.put("/demo", "");
    server.putObject("demo", "k", "x");
    EXPECT_EQ(client.remove("/demo").element("Code"), "BucketNotEmpty");
    EXPECT_EQ(server.keys("demo").size(), 1u);
}

TEST_F(Buckets, WithNamesThatS3RefusesAreRefused) {
    for (const std::string& name :
         {std::string("ab"), std::string(64, 'a'), std::string("Upper"), std::string("under_score"),
          std::string("-start"), std::string("end-"), std::string("two..dots"), std::string("192.168.5.4"),
          std::string("xn--b"), std::string("sthree-b"), std::string("amzn-s3-demo-b"),
          std::string("b-s3alias"), std::string("b--ol-s3"), std::string("b.mrap"), std::string("b--x-s3"),
          std::string("b--table-s3")}) {
        EXPECT_EQ(client.put("/" + name, "").element("Code"), "InvalidBucketName") << name;
        EXPECT_THROW(server.createBucket(name), std::invalid_argument) << name;
    }
    EXPECT_THAT(client.get("/").elements("Name"), IsEmpty());
}

TEST_F(Buckets, WithNamesThatS3TakesAreTaken) {
    for (const std::string& name :
         {std::string("abc"), std::string(63, 'a'), std::string("1.2.3"), std::string("1.2.3.4.5"),
          std::string("a.b.c.d"), std::string("a--b"), std::string("x-s3"), std::string("a-s3alias-b")})
        EXPECT_EQ(client.put("/" + name, "").status, 200) << name;
}

TEST_F(Buckets, WithALocationThatIsNoneAreRefused) {
    const std::string start = "<CreateBucketConfiguration><LocationConstraint>";
    const std::string end = "</LocationConstraint></CreateBucketConfiguration>";
    EXPECT_EQ(client.put("/demo", start + "eu&#13;&#10;x: y" + end).element("Code"),
              "InvalidLocationConstraint");
    EXPECT_EQ(client.put("/demo", "<Other/>").element("Code"), "MalformedXML");
    EXPECT_THROW(server.createBucket("demo", "eu west"), std::invalid_argument);
    EXPECT_THROW(server.createBucket("demo", ""), std::invalid_argument);
}

struct Unconfigured {
    const char* subresource;
    int status;
    /// The error's code, or the root element that comes without anything in it.
    const char* word;
};

TEST_F(Buckets, SayOfEachConfigurationThatTheyHaveNone) {
    server.createBucket("demo");
    const Unconfigured cases[] = {
        {"accelerate", 200, "AccelerateConfiguration"},
        {"cors", 404, "NoSuchCORSConfiguration"},
        {"encryption", 404, "ServerSideEncryptionConfigurationNotFoundError"},
        {"lifecycle", 404, "NoSuchLifecycleConfiguration"},
        {"logging", 200, "BucketLoggingStatus"},
        {"notification", 200, "NotificationConfiguration"},
        {"object-lock", 404, "ObjectLockConfigurationNotFoundError"},
        {"ownershipControls", 404, "OwnershipControlsNotFoundError"},
        {"policy", 404, "NoSuchBucketPolicy"},
        {"policyStatus", 404, "NoSuchBucketPolicy"},
        {"publicAccessBlock", 404, "NoSuchPublicAccessBlockConfiguration"},
        {"replication", 404, "ReplicationConfigurationNotFoundError"},
        {"tagging", 404, "NoSuchTagSet"},
        {"versioning", 200, "VersioningConfiguration"},
        {"website", 404, "NoSuchWebsiteConfiguration"},
    };
    for (const auto& [subresource, status, word] : cases) {
        const Answer answer = client.get(std::string("/demo?") + subresource);
        EXPECT_EQ(answer.status, status) << subresource;
        if (status == 404)
            EXPECT_EQ(answer.element("Code"), word);
        else
            EXPECT_THAT(answer.body,
                        HasSubstr(std::string("\n<") + word +
                                  " xmlns=\"http://s3.amazonaws.com/doc/2006-03-01/\"></" + word + ">"));
        EXPECT_EQ(client.get(std::string("/nothing?") + subresource).element("Code"), "NoSuchBucket");
        EXPECT_EQ(client.put(std::string("/demo?") + subresource, "").element("Code"), "NotImplemented");
    }
    EXPECT_EQ(client.get("/demo?requestPayment").element("Payer"), "BucketOwner");
}

TEST_F(Buckets, AndTheirObjectsAreTheirOwnersAlone) {
    server.createBucket("demo");
    server.putObject("demo", "k", "x");
    for (const char* const target : {"/demo?acl", "/demo/k?acl"}) {
        const Answer answer = client.get(target);
        EXPECT_EQ(answer.status, 200);
        EXPECT_THAT(answer.elements("ID"), ElementsAre("s3server", "s3server"));
        EXPECT_THAT(answer.elements("Permission"), ElementsAre("FULL_CONTROL"));
        EXPECT_THAT(answer.body, HasSubstr(" xsi:type=\"CanonicalUser\">"));
    }
    EXPECT_EQ(client.get("/demo/nothing?acl").element("Code"), "NoSuchKey");
    EXPECT_EQ(client.put("/demo/k?acl", "").element("Code"), "NotImplemented");
}

}  // namespace
}  // namespace s3server::test
