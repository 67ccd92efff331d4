#include <gmock/gmock.h>

#include "Client.hpp"
#include "s3server/Server.hpp"

namespace s3server::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class Listings : public testing::Test {
protected:
    Listings() { server.createBucket("demo"); }

    static Options options() {
        Options options;
        options.checkSignatures = false;
        options.clock = [] { return std::chrono::system_clock::from_time_t(1369353600); };
        return options;
    }
    void store(const std::vector<std::string>& keys) {
        for (const std::string& key : keys)
            server.putObject("demo", key, "x");
    }
    Answer list(const std::string& query = "") { return client.get("/demo?list-type=2" + query); }

    Server server{options()};
    Client client{server.endpoint()};
};

TEST_F(Listings, DescribeTheObjects) {
    server.putObject("demo", "k", "hello");
    const Answer answer = list();
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.header("content-type"), "application/xml");
    EXPECT_THAT(answer.body,
                HasSubstr("<ListBucketResult xmlns=\"http://s3.amazonaws.com/doc/2006-03-01/\">"
                          "<Name>demo</Name><Prefix/><KeyCount>1</KeyCount><MaxKeys>1000</MaxKeys>"
                          "<IsTruncated>false</IsTruncated><Contents><Key>k</Key>"
                          "<LastModified>2013-05-24T00:00:00.000Z</LastModified>"
                          "<ETag>&quot;5d41402abc4b2a76b9719d911017c592&quot;</ETag>"
                          "<Size>5</Size><StorageClass>STANDARD</StorageClass></Contents>"
                          "</ListBucketResult>"));
}

TEST_F(Listings, RollUpFolders) {
    store({"a", "d/1", "d/e/2", "f/3"});
    const Answer answer = list("&delimiter=/&prefix=d/");
    EXPECT_THAT(answer.elements("Key"), ElementsAre("d/1"));
    EXPECT_THAT(answer.elements("CommonPrefixes"), ElementsAre("<Prefix>d/e/</Prefix>"));
    EXPECT_EQ(answer.element("KeyCount"), "2");
    EXPECT_EQ(answer.element("Delimiter"), "/");
}

TEST_F(Listings, GoOnWithTheirToken) {
    store({"a", "b", "c"});
    const Answer first = list("&max-keys=2");
    EXPECT_THAT(first.elements("Key"), ElementsAre("a", "b"));
    EXPECT_EQ(first.element("IsTruncated"), "true");
    const std::string token = first.element("NextContinuationToken");
    const Answer second = list("&max-keys=2&start-after=zzz&continuation-token=" + token);
    EXPECT_THAT(second.elements("Key"), ElementsAre("c"));
    EXPECT_EQ(second.element("ContinuationToken"), token);
    EXPECT_EQ(second.element("NextContinuationToken"), "");
}

TEST_F(Listings, StartAfterAKey) {
    store({"a", "b", "c"});
    EXPECT_THAT(list("&start-after=a").elements("Key"), ElementsAre("b", "c"));
    EXPECT_EQ(list("&start-after=a").element("StartAfter"), "a");
}

TEST_F(Listings, EncodeNamesIfTold) {
    store({"a b+c/\xc3\xbc~*", "p q/x"});
    const Answer answer = list("&encoding-type=url&delimiter=%2B");
    EXPECT_THAT(answer.elements("Key"), ElementsAre("p+q/x"));
    EXPECT_THAT(answer.elements("CommonPrefixes"), ElementsAre("<Prefix>a+b%2B</Prefix>"));
    EXPECT_EQ(answer.element("Delimiter"), "%2B");
    EXPECT_EQ(answer.element("EncodingType"), "url");
    EXPECT_EQ(list("&encoding-type=url&prefix=a%20b").element("Key"), "a+b%2Bc/%C3%BC%7E*");
    EXPECT_EQ(list("&encoding-type=url&prefix=a%20b").element("Prefix"), "a+b");
}

TEST_F(Listings, EscapeNamesIfNot) {
    store({"a&<\r\n>"});
    EXPECT_EQ(list().element("Key"), "a&amp;&lt;&#13;&#10;&gt;");
}

TEST_F(Listings, HaveAThousandKeysAtMost) {
    for (int i = 0; i < 1001; ++i)
        server.putObject("demo", std::to_string(i), "");
    EXPECT_THAT(list("&max-keys=5000").elements("Key"), SizeIs(1000));
    EXPECT_EQ(list("&max-keys=5000").element("MaxKeys"), "1000");
    EXPECT_EQ(list("&max-keys=5000").element("IsTruncated"), "true");
    EXPECT_THAT(list("&max-keys=0").elements("Key"), IsEmpty());
    EXPECT_EQ(list("&max-keys=0").element("IsTruncated"), "false");
}

TEST_F(Listings, RefuseParametersThatAreNone) {
    for (const char* const query : {"&max-keys=-1", "&max-keys=a", "&max-keys=2147483648",
                                    "&encoding-type=base64", "&continuation-token=abc"})
        EXPECT_EQ(list(query).element("Code"), "InvalidArgument") << query;
    EXPECT_EQ(client.get("/demo?list-type=3").element("Code"), "InvalidArgument");
    EXPECT_EQ(client.get("/nothing?list-type=2").element("Code"), "NoSuchBucket");
}

TEST_F(Listings, OfTheFirstKindGoOnBehindAMarker) {
    store({"a", "b/1", "b/2", "c"});
    const Answer first = client.get("/demo?delimiter=/&max-keys=2");
    EXPECT_THAT(first.elements("Key"), ElementsAre("a"));
    EXPECT_EQ(first.element("NextMarker"), "b/");
    EXPECT_THAT(client.get("/demo?delimiter=/&marker=b/").elements("Key"), ElementsAre("c"));
    EXPECT_THAT(client.get("/demo?marker=b/1").elements("Key"), ElementsAre("b/2", "c"));
}

}  // namespace
}  // namespace s3server::test
