#include <gmock/gmock.h>

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
    for (const char* const name : {"ab", "Upper", "under_score", "-start", "end-", "two..dots"})
        EXPECT_EQ(client.put(std::string("/") + name, "").element("Code"), "InvalidBucketName") << name;
}

TEST_F(Buckets, WithALocationThatIsNoneAreRefused) {
    const std::string start = "<CreateBucketConfiguration><LocationConstraint>";
    const std::string end = "</LocationConstraint></CreateBucketConfiguration>";
    EXPECT_EQ(client.put("/demo", start + "eu&#13;&#10;x: y" + end).element("Code"),
              "InvalidLocationConstraint");
    EXPECT_EQ(client.put("/demo", "<Other/>").element("Code"), "MalformedXML");
}

}  // namespace
}  // namespace s3server::test
