#include <gmock/gmock.h>

#include "Client.hpp"
#include "s3server/Server.hpp"

namespace s3server::test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::Eq;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Optional;

class Objects : public testing::Test {
protected:
    Objects() { server.createBucket("demo"); }

    static Options options() {
        Options options;
        options.checkSignatures = false;
        options.clock = [] { return std::chrono::system_clock::from_time_t(1369353600); };
        return options;
    }

    Server server{options()};
    Client client{server.endpoint()};
};

TEST_F(Objects, ComeBackAsTheyWereStored) {
    const std::string bytes("\0\r\n\xff binary", 11);
    const Answer put = client.put("/demo/a%20b/%C3%BC%2B", bytes, {{"Content-Type", "text/plain"}});
    EXPECT_EQ(put.status, 200);
    const Answer get = client.get("/demo/a%20b/%C3%BC%2B");
    EXPECT_EQ(get.status, 200);
    EXPECT_EQ(get.body, bytes);
    EXPECT_EQ(get.header("etag"), put.header("etag"));
    EXPECT_EQ(get.header("content-type"), "text/plain");
    EXPECT_EQ(get.header("last-modified"), "Fri, 24 May 2013 00:00:00 GMT");
    EXPECT_THAT(server.keys("demo"), ElementsAre("a b/\xc3\xbc+"));
}

TEST_F(Objects, HaveTheirMd5AsTag) {
    EXPECT_EQ(client.put("/demo/k", "hello").header("etag"), "\"5d41402abc4b2a76b9719d911017c592\"");
    EXPECT_EQ(client.put("/demo/k", "").header("etag"), "\"d41d8cd98f00b204e9800998ecf8427e\"");
}

TEST_F(Objects, KeepTheHeadersThatBelongToThem) {
    client.put("/demo/k", "x",
               {{"x-amz-meta-Colour", "blue"},
                {"Cache-Control", "no-cache"},
                {"Content-Encoding", "gzip"},
                {"Content-Disposition", "attachment"},
                {"Content-Language", "fr"},
                {"Expires", "Fri, 24 May 2030 00:00:00 GMT"},
                {"x-amz-other", "lost"}});
    const Answer answer = client.head("/demo/k");
    EXPECT_EQ(answer.header("x-amz-meta-colour"), "blue");
    EXPECT_EQ(answer.header("cache-control"), "no-cache");
    EXPECT_EQ(answer.header("content-encoding"), "gzip");
    EXPECT_EQ(answer.header("content-disposition"), "attachment");
    EXPECT_EQ(answer.header("content-language"), "fr");
    EXPECT_EQ(answer.header("expires"), "Fri, 24 May 2030 00:00:00 GMT");
    EXPECT_EQ(answer.header("content-type"), "binary/octet-stream");
    EXPECT_EQ(answer.header("x-amz-other"), "");
}

TEST_F(Objects, AreDescribedByAHeadWithoutABody) {
    server.putObject("demo", "k", "12345");
    const Answer answer = client.head("/demo/k");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.header("content-length"), "5");
    EXPECT_EQ(answer.header("accept-ranges"), "bytes");
    EXPECT_EQ(answer.body, "");
}

TEST_F(Objects, ThatDontExistAreNamedInTheErrorButNotToAHead) {
    const Answer get = client.get("/demo/no%26key");
    EXPECT_EQ(get.status, 404);
    EXPECT_EQ(get.element("Code"), "NoSuchKey");
    EXPECT_EQ(get.element("Key"), "no&amp;key");
    const Answer head = client.head("/demo/no%26key");
    EXPECT_EQ(head.status, 404);
    EXPECT_EQ(head.body, "");
    EXPECT_NE(head.header("x-amz-request-id"), "");
}

TEST_F(Objects, AreReadInRanges) {
    server.putObject("demo", "k", "0123456789");
    const Answer middle = client.get("/demo/k", {{"Range", "bytes=2-4"}});
    EXPECT_EQ(middle.status, 206);
    EXPECT_EQ(middle.body, "234");
    EXPECT_EQ(middle.header("content-range"), "bytes 2-4/10");
    EXPECT_EQ(client.get("/demo/k", {{"Range", "bytes=-3"}}).body, "789");
    EXPECT_EQ(client.get("/demo/k", {{"Range", "bytes=8-"}}).body, "89");
    EXPECT_EQ(client.head("/demo/k", {{"Range", "bytes=2-4"}}).header("content-length"), "3");
}

TEST_F(Objects, AreReadWholeForARangeThatIsNone) {
    server.putObject("demo", "k", "0123456789");
    const Answer answer = client.get("/demo/k", {{"Range", "bytes=0-1,3-4"}});
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.body, "0123456789");
}

TEST_F(Objects, RefuseARangeBehindTheirEnd) {
    server.putObject("demo", "k", "0123456789");
    const Answer answer = client.get("/demo/k", {{"Range", "bytes=10-"}});
    EXPECT_EQ(answer.status, 416);
    EXPECT_EQ(answer.element("Code"), "InvalidRange");
    EXPECT_EQ(answer.element("ActualObjectSize"), "10");
}

TEST_F(Objects, AreReadUnderConditions) {
    const std::string etag = client.put("/demo/k", "x").header("etag");
    EXPECT_EQ(client.get("/demo/k", {{"If-Match", "\"other\""}}).element("Code"), "PreconditionFailed");
    const Answer unchanged = client.get("/demo/k", {{"If-None-Match", etag}});
    EXPECT_EQ(unchanged.status, 304);
    EXPECT_EQ(unchanged.body, "");
    EXPECT_EQ(unchanged.header("etag"), etag);
}

TEST_F(Objects, AreWrittenUnderConditions) {
    EXPECT_EQ(client.put("/demo/k", "1", {{"If-None-Match", "*"}}).status, 200);
    EXPECT_EQ(client.put("/demo/k", "2", {{"If-None-Match", "*"}}).status, 412);
    EXPECT_EQ(client.put("/demo/k", "3", {{"If-Match", "\"other\""}}).status, 412);
    EXPECT_EQ(client.put("/demo/none", "4", {{"If-Match", "\"other\""}}).element("Code"), "NoSuchKey");
    EXPECT_THAT(server.object("demo", "k"), Optional(Eq("1")));
}

TEST_F(Objects, ArentStoredFromADamagedBody) {
    EXPECT_EQ(client.put("/demo/k", "x", {{"Content-MD5", "XUFAKrxLKna5cZ2REBfFkg=="}}).element("Code"),
              "BadDigest");
    EXPECT_EQ(client.put("/demo/k", "x", {{"Content-MD5", "short"}}).element("Code"), "InvalidDigest");
    EXPECT_EQ(client
                  .put("/demo/k", "x",
                       {{"x-amz-content-sha256",
                         "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"}})
                  .element("Code"),
              "XAmzContentSHA256Mismatch");
    EXPECT_THAT(server.keys("demo"), IsEmpty());
}

TEST_F(Objects, HaveNoTags) {
    client.put("/demo/k", "x");
    const Answer answer = client.get("/demo/k?tagging");
    EXPECT_EQ(answer.status, 200);
    EXPECT_THAT(answer.body,
                EndsWith("<Tagging xmlns=\"http://s3.amazonaws.com/doc/2006-03-01/\"><TagSet/></Tagging>"));
    EXPECT_EQ(client.get("/demo/missing?tagging").element("Code"), "NoSuchKey");
    EXPECT_EQ(client.put("/demo/k?tagging", "<Tagging/>").status, 501);
}

TEST_F(Objects, ArentStoredWithWishesThatCantBeFulfilled) {
    EXPECT_EQ(client.put("/demo/k", "x", {{"x-amz-tagging", "a=b"}}).status, 501);
    EXPECT_EQ(
        client.put("/demo/k", "x", {{"x-amz-server-side-encryption-customer-algorithm", "AES256"}}).status,
        501);
    EXPECT_THAT(server.keys("demo"), IsEmpty());
}

TEST_F(Objects, ComeWithTheHeadersThatTheQueryWants) {
    server.putObject("demo", "k", "x");
    EXPECT_EQ(client.get("/demo/k?response-content-type=text%2Fhtml").header("content-type"), "text/html");
    EXPECT_EQ(client.get("/demo/k?response-expires=a%0D%0Ax:y").element("Code"), "InvalidArgument");
}

TEST_F(Objects, AreDeletedWhetherTheyExistOrNot) {
    server.putObject("demo", "k", "x");
    EXPECT_EQ(client.remove("/demo/k").status, 204);
    EXPECT_EQ(client.remove("/demo/k").status, 204);
    EXPECT_THAT(server.keys("demo"), IsEmpty());
    EXPECT_EQ(client.remove("/nothing/k").element("Code"), "NoSuchBucket");
}

TEST_F(Objects, AreDeletedByTheList) {
    for (const char* const key : {"a", "b&c", "d"})
        server.putObject("demo", key, "x");
    const std::string list =
        "<Delete><Object><Key>a</Key></Object><Object><Key>b&amp;c</Key></Object></Delete>";
    const Answer answer = client.post(
        "/demo?delete", list, {{"x-amz-checksum-sha256", "2JY5vtp4LOsxLfGdIwUcrSqXQUmF77gRExKkvW2CVDg="}});
    EXPECT_EQ(answer.status, 400) << "the checksum isn't the list's";
    const Answer good = client.post("/demo?delete", list, {{"Content-MD5", "XFiXq0UbWoGI2azEn5jflg=="}});
    EXPECT_EQ(good.status, 200) << good.body;
    EXPECT_THAT(good.elements("Key"), ElementsAre("a", "b&amp;c"));
    EXPECT_THAT(server.keys("demo"), ElementsAre("d"));
}

TEST_F(Objects, AreDeletedByTheListInSilenceIfWanted) {
    server.putObject("demo", "a", "x");
    const Answer answer =
        client.post("/demo?delete", "<Delete><Quiet>true</Quiet><Object><Key>a</Key></Object></Delete>",
                    {{"Content-MD5", "kr09joMOwMlnmHIATQxZjg=="}});
    EXPECT_EQ(answer.status, 200) << answer.body;
    EXPECT_THAT(answer.elements("Key"), IsEmpty());
    EXPECT_THAT(server.keys("demo"), IsEmpty());
}

TEST_F(Objects, ArentDeletedByAListWithoutChecksumOrWithoutKeys) {
    server.putObject("demo", "a", "x");
    const std::string list = "<Delete><Object><Key>a</Key></Object></Delete>";
    EXPECT_THAT(client.post("/demo?delete", list).body, HasSubstr("Content-MD5"));
    EXPECT_EQ(client.post("/demo?delete", "<Delete/>", {{"Content-MD5", "ePbrFwvNFIRnzBrIv+T8Ag=="}})
                  .element("Code"),
              "MalformedXML");
    EXPECT_THAT(server.keys("demo"), ElementsAre("a"));
}

}  // namespace
}  // namespace s3server::test
