#include "http/Request.hpp"

#include <gmock/gmock.h>

#include "Refusal.hpp"

namespace s3server::test {
namespace {

using testing::ElementsAre;
using testing::Pair;

const std::vector<std::string> hostNames{"localhost", "s3.amazonaws.com"};

Request locatedAt(const std::string& host, const std::string& target) {
    Request request;
    request.target = target;
    request.headers = {{"host", host}};
    locate(request, hostNames);
    return request;
}

struct HostCase {
    const char* host;
    const char* bucket;
};

TEST(Host, NamesTheBucketBeforeAKnownName) {
    const HostCase cases[] = {
        {"localhost", ""},
        {"demo.localhost:9000", "demo"},
        {"Demo.LOCALHOST", "demo"},
        {"my.bucket.s3.amazonaws.com", "my.bucket"},
        {"s3.amazonaws.com", ""},
        {"s3.eu-west-3.amazonaws.com", ""},
        {"demo.s3.eu-west-3.amazonaws.com", "demo"},
        {"demo.s3.dualstack.eu-west-3.amazonaws.com", "demo"},
        {"demo.s3-eu-west-3.amazonaws.com", "demo"},
        {"s3-eu-west-3.amazonaws.com", ""},
        {"127.0.0.1:9000", ""},
        {"[::1]:9000", ""},
        {"other.example.com", ""},
        {"xlocalhost", ""},
        {"", ""},
    };
    for (const auto& [host, bucket] : cases)
        EXPECT_EQ(bucketOfHost(host, hostNames), bucket) << host;
}

TEST(Target, NamesBucketAndKeyByThePath) {
    const Request request = locatedAt("127.0.0.1", "/demo/a%20b/c%2Bd+e%252F//f");
    EXPECT_EQ(request.bucket, "demo");
    EXPECT_EQ(request.key, "a b/c+d+e%2F//f");
    EXPECT_EQ(request.path, "/demo/a%20b/c%2Bd+e%252F//f");
}

TEST(Target, NamesTheKeyOnlyWhereTheHostNamesTheBucket) {
    const Request request = locatedAt("demo.localhost", "/demo/k");
    EXPECT_EQ(request.bucket, "demo");
    EXPECT_EQ(request.key, "demo/k");
}

TEST(Target, KeepsLeadingSlashesAndDotsOfAKey) {
    EXPECT_EQ(locatedAt("127.0.0.1", "/demo//k").key, "/k");
    EXPECT_EQ(locatedAt("127.0.0.1", "/demo/a/../b/.").key, "a/../b/.");
}

TEST(Target, WithAnAuthorityCountsMoreThanTheHostHeader) {
    const Request request = locatedAt("127.0.0.1:9000", "http://demo.localhost/a/b?list-type=2");
    EXPECT_EQ(request.bucket, "demo");
    EXPECT_EQ(request.key, "a/b");
    EXPECT_EQ(locatedAt("127.0.0.1", "http://localhost").path, "/");
}

TEST(Target, HasDecodedParametersInOrder) {
    EXPECT_THAT(locatedAt("127.0.0.1", "/b?prefix=a%2Bb+c&uploads&&x=%26=1").query,
                ElementsAre(Pair("prefix", "a+b c"), Pair("uploads", ""), Pair("x", "&=1")));
}

TEST(Target, ThatIsMalformedIsRefused) {
    for (const char* const target : {"/b/%", "/b/%zz", "/b/%ff", "/b?x=%4", "*", "b/k", ""})
        EXPECT_EQ(codeOf([target] { locatedAt("127.0.0.1", target); }), "InvalidURI") << target;
}

TEST(Target, MayNameAKeyOf1024BytesAndNoLonger) {
    EXPECT_EQ(codeOf([] { locatedAt("127.0.0.1", "/b/" + std::string(1024, 'k')); }), "");
    EXPECT_EQ(codeOf([] { locatedAt("127.0.0.1", "/b/" + std::string(1025, 'k')); }), "KeyTooLongError");
    std::string encoded = "/b/";
    for (int i = 0; i < 513; ++i)
        encoded += "%C3%BC";
    EXPECT_EQ(codeOf([&] { locatedAt("127.0.0.1", encoded); }), "KeyTooLongError");
}

}  // namespace
}  // namespace s3server::test
