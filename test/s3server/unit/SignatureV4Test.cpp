#include "auth/SignatureV4.hpp"

#include <gmock/gmock.h>

#include "PublishedRequests.hpp"
#include "text/Digest.hpp"

namespace s3server::test {
namespace {

const CredentialScope scope{"20130524", "us-east-1", "s3"};
const std::vector<std::string> bucketRequestHeaders{"host", "x-amz-content-sha256", "x-amz-date"};

TEST(CanonicalRequest, IsThePublishedOneForAnObjectWithRange) {
    EXPECT_EQ(
        canonicalRequest(publishedGet(), {"host", "range", "x-amz-content-sha256", "x-amz-date"}, emptyHash),
        "GET\n/test.txt\n\nhost:examplebucket.s3.amazonaws.com\nrange:bytes=0-9\nx-amz-content-sha256:" +
            emptyHash + "\nx-amz-date:20130524T000000Z\n\nhost;range;x-amz-content-sha256;x-amz-date\n" +
            emptyHash);
}

TEST(CanonicalRequest, EncodesThePathAnewWhateverWasEncodedOnTheWire) {
    Request raw = publishedGet();
    raw.path = "/a$b/c,d";
    Request encoded = raw;
    encoded.path = "/a%24b/%63%2Cd";
    const auto canonical = canonicalRequest(raw, {"host"}, emptyHash);
    EXPECT_EQ(canonical, canonicalRequest(encoded, {"host"}, emptyHash));
    EXPECT_THAT(canonical, testing::StartsWith("GET\n/a%24b/c%2Cd\n"));
}

TEST(CanonicalRequest, KeepsEmptyAndDotSegmentsOfThePath) {
    Request request = publishedGet();
    request.path = "/a//b/../c/./";
    EXPECT_THAT(canonicalRequest(request, {"host"}, emptyHash), testing::StartsWith("GET\n/a//b/../c/./\n"));
}

TEST(CanonicalRequest, TrimsAndJoinsHeaderValues) {
    Request request = publishedGet();
    request.headers = {{"x-amz-meta-a", "  one   two "}, {"x-amz-meta-a", "three"}};
    EXPECT_THAT(canonicalRequest(request, {"x-amz-meta-a"}, emptyHash),
                testing::HasSubstr("\nx-amz-meta-a:one two,three\n"));
}

TEST(CanonicalQuery, IsSortedByNameAndValueAndGivesEveryNameAnEqualsSign) {
    EXPECT_EQ(canonicalQuery(
                  located({"GET", "/b?z=2&z=1&uploads&a=x%2By%20z&X-Amz-Signature=abc", {}, {}, {}, {}, {}})),
              "a=x%2By%20z&uploads=&z=1&z=2");
}

TEST(Signature, IsThePublishedOneForEachExample) {
    const std::string key = signingKey(publishedKeys.secretKey, scope);
    const auto signatureFor = [&](const Request& request) {
        return signatureOf(key, stringToSign("20130524T000000Z", scope,
                                             canonicalRequest(request, bucketRequestHeaders, emptyHash)));
    };
    EXPECT_EQ(signatureFor(publishedLifecycleGet()),
              "fea454ca298b7da1c68078a5d1bdbfbbe0d65c699e0f91ac7a200a0136783543");
    EXPECT_EQ(signatureFor(publishedList()),
              "34b48302e7b5fa45bde8084f4b7868a86f0a534bc59db6670ed5711ef69dc6f7");
}

TEST(ChunkSignatures, ArePublishedOnesEachFromTheOneBefore) {
    ChunkSignatures chunks(signingKey(publishedKeys.secretKey, scope), "20130524T000000Z", scope,
                           "4f232c4386841ef735655705268965c44a0e4690baa4adea153f7db9fa80a0a9");
    const auto next = [&chunks](std::size_t length) {
        return chunks.nextChunk(digestOf(Digest::sha256(), std::string(length, 'a')));
    };
    EXPECT_EQ(next(65536), "ad80c730a21e5b8d04586a2213dd63b9a0e99e0e2307b0ade35a65485a288648");
    EXPECT_EQ(next(1024), "0055627c9e194cb4542bae2aa5492e3c1575bbb81b612b7d234b86a503ef5497");
    EXPECT_EQ(next(0), "b6c6ea8a5354eaf15b3cb7646744f4275b71ea724fed81ceb9323e279d449df9");
}

TEST(ChunkSignatures, CoverTrailingHeadersAsPublished) {
    ChunkSignatures chunks(signingKey(publishedKeys.secretKey, scope), "20130524T000000Z", scope,
                           "106e2a8a18243abcf37539882f36619c00e2dfc72633413f02d3b74544bfeb8e");
    for (const std::size_t length : {std::size_t{65536}, std::size_t{1024}, std::size_t{0}})
        chunks.nextChunk(digestOf(Digest::sha256(), std::string(length, 'a')));
    EXPECT_EQ(chunks.trailer("x-amz-checksum-crc32c:sOO8/Q==\n"),
              "d81f82fc3505edab99d459891051a732e8730629a2e4a59689829ca17fe2e435");
}

}  // namespace
}  // namespace s3server::test
