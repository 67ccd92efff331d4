#include <gmock/gmock.h>

#include "Client.hpp"
#include "s3server/Server.hpp"

namespace s3server::test {
namespace {

using testing::Eq;
using testing::Optional;

class Copy : public testing::Test {
protected:
    Copy() {
        server.createBucket("demo");
        server.createBucket("other");
    }

    static Options openToAll() {
        Options options;
        options.checkSignatures = false;
        return options;
    }
    Answer copy(const std::string& target, const std::string& source, Headers headers = {}) {
        headers.emplace_back("x-amz-copy-source", source);
        return client.put(target, "", headers);
    }

    Server server{openToAll()};
    Client client{server.endpoint()};
};

TEST_F(Copy, TakesBytesTagAndMetadataAlong) {
    const std::string etag = client.put("/demo/from", "hello", {{"x-amz-meta-a", "b"}}).header("etag");
    const Answer answer = copy("/other/to", "/demo/from");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.element("ETag"), "&quot;" + etag.substr(1, 32) + "&quot;");
    const Answer copied = client.get("/other/to");
    EXPECT_EQ(copied.body, "hello");
    EXPECT_EQ(copied.header("etag"), etag);
    EXPECT_EQ(copied.header("x-amz-meta-a"), "b");
}

TEST_F(Copy, DecodesTheSourceOnce) {
    server.putObject("demo", "a%2Fb +c", "x");
    EXPECT_EQ(copy("/demo/1", "demo/a%252Fb%20+c").status, 200);
    EXPECT_EQ(copy("/demo/2", "demo/a%2Fb%20+c").element("Code"), "NoSuchKey");
}

TEST_F(Copy, RefusesASourceThatIsNone) {
    for (const char* const source : {"demo", "demo/", "/", "demo/%zz"})
        EXPECT_EQ(copy("/demo/to", source).element("Code"), "InvalidArgument") << source;
    EXPECT_EQ(copy("/demo/to", "nothing/k").element("Code"), "NoSuchBucket");
    EXPECT_EQ(copy("/demo/to", "demo/k?versionId=1").element("Code"), "NotImplemented");
}

TEST_F(Copy, ReplacesTheMetadataIfTold) {
    client.put("/demo/k", "hello", {{"x-amz-meta-a", "b"}});
    EXPECT_EQ(copy("/demo/k", "demo/k").element("Code"), "InvalidRequest");
    EXPECT_EQ(
        copy("/demo/k", "demo/k", {{"x-amz-metadata-directive", "REPLACE"}, {"x-amz-meta-c", "d"}}).status,
        200);
    const Answer copied = client.get("/demo/k");
    EXPECT_EQ(copied.body, "hello");
    EXPECT_EQ(copied.header("x-amz-meta-a"), "");
    EXPECT_EQ(copied.header("x-amz-meta-c"), "d");
    EXPECT_EQ(copy("/demo/k", "demo/k", {{"x-amz-metadata-directive", "MERGE"}}).element("Code"),
              "InvalidArgument");
}

TEST_F(Copy, HoldsToConditionsOnTheSource) {
    server.putObject("demo", "k", "x");
    EXPECT_EQ(copy("/demo/to", "demo/k", {{"x-amz-copy-source-if-match", "\"other\""}}).status, 412);
    EXPECT_EQ(server.object("demo", "to"), std::nullopt);
}

TEST_F(Copy, OutlivesItsSource) {
    server.putObject("demo", "k", "x");
    copy("/demo/to", "demo/k");
    server.putObject("demo", "k", "y");
    EXPECT_THAT(server.object("demo", "to"), Optional(Eq("x")));
}

}  // namespace
}  // namespace s3server::test
