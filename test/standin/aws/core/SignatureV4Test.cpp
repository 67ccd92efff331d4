#include "core/SignatureV4.hpp"

#include <gtest/gtest.h>

#include "core/RequestTarget.hpp"

using namespace standin::aws;

namespace {

// The examples of the Amazon S3 API Reference, "Signature Calculations for the Authorization Header:
// Transferring Payload in a Single Chunk". All are made with the same credentials at the same time.
constexpr const char* secretKey = "wJalrXUtnFEMI/K7MDENG/bPxRfiCYEXAMPLEKEY";
constexpr const char* timestamp = "20130524T000000Z";
constexpr const char* emptyPayload = "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855";
const CredentialScope scope{"20130524", "us-east-1", "s3"};

struct PublishedExample {
    const char* name;
    const char* method;
    const char* path;
    const char* subresource;
    QueryParameters query;
    Headers headers;
    const char* payloadHash;
    const char* canonicalRequestHash;
    const char* signature;
};

Headers withCommonHeaders(Headers headers, const std::string& payloadHash) {
    headers["host"] = "examplebucket.s3.amazonaws.com";
    headers["x-amz-content-sha256"] = payloadHash;
    headers["x-amz-date"] = timestamp;
    return headers;
}

const PublishedExample examples[] = {
    {"GetObjectWithRange",
     "GET",
     "/test.txt",
     "",
     {},
     {{"range", "bytes=0-9"}},
     emptyPayload,
     "7344ae5b7ee6c3e7e6b0fe0640412a37625d1fbfff95c48bbb2dc43964946972",
     "f0e8bdb87c964420e857bd35b5d6ed310bd44f0170aba48dd91039c6036bdb41"},
    {"PutObject",
     "PUT",
     "/test$file.text",
     "",
     {},
     {{"date", "Fri, 24 May 2013 00:00:00 GMT"}, {"x-amz-storage-class", "REDUCED_REDUNDANCY"}},
     "44ce7dd67c959e0d3524ffac1771dfbba87d2b6b4b4e99e42034a8b803f8b072",
     "9e0e90d9c76de8fa5b200d8c849cd5b8dc7a3be3951ddb7f6a76b4158342019d",
     "98ad721746da40c64f1a55b78f14c238d841ea1380cd77a1b5971af0ece108bd"},
    {"GetBucketLifecycle",
     "GET",
     "/",
     "lifecycle",
     {},
     {},
     emptyPayload,
     "9766c798316ff2757b517bc739a67f6213b4ab36dd5da2f94eaebf79c77395ca",
     "fea454ca298b7da1c68078a5d1bdbfbbe0d65c699e0f91ac7a200a0136783543"},
    {"ListObjects",
     "GET",
     "/",
     "",
     {{"prefix", "J"}, {"max-keys", "2"}},
     {},
     emptyPayload,
     "df57d21db20da04d7fa30298dd4488ba3a2b47ca3a489c74750e0f1e7df1b9b7",
     "34b48302e7b5fa45bde8084f4b7868a86f0a534bc59db6670ed5711ef69dc6f7"},
};

class PublishedSignature : public ::testing::TestWithParam<PublishedExample> {};

TEST_P(PublishedSignature, IsWhatTheCanonicalRequestGives) {
    const PublishedExample& example = GetParam();
    const RequestTarget target = encodeTarget(example.path, example.subresource, example.query);
    const std::string canonical =
        canonicalRequest({example.method, target.canonicalPath, target.canonicalQuery,
                          withCommonHeaders(example.headers, example.payloadHash), example.payloadHash});
    EXPECT_EQ(sha256Hex(canonical), example.canonicalRequestHash) << canonical;
    EXPECT_EQ(signatureOf(stringToSign(timestamp, scope, canonical), signingKey(secretKey, scope)),
              example.signature);
}

INSTANTIATE_TEST_SUITE_P(SignatureV4, PublishedSignature, ::testing::ValuesIn(examples),
                         [](const auto& test) { return test.param.name; });

TEST(SignatureV4, WritesTheStringToSignOnFourLines) {
    EXPECT_EQ(stringToSign(timestamp, scope, ""),
              std::string("AWS4-HMAC-SHA256\n20130524T000000Z\n20130524/us-east-1/s3/aws4_request\n") +
                  emptyPayload);
}

TEST(SignatureV4, TrimsHeaderValuesAndMakesRunsOfBlanksOne) {
    const Headers headers{{"host", "h"}, {"x-amz-meta-a", "\t  two   words\t\tmore\t "}};
    EXPECT_EQ(canonicalRequest({"GET", "/", "", headers, "HASH"}),
              "GET\n/\n\nhost:h\nx-amz-meta-a:two words\t\tmore\n\nhost;x-amz-meta-a\nHASH");
}

TEST(SignatureV4, PutsScopeNamesAndSignatureIntoTheHeader) {
    EXPECT_EQ(authorizationHeader("AKID", scope, "host;range", "abcd"),
              "AWS4-HMAC-SHA256 Credential=AKID/20130524/us-east-1/s3/aws4_request, "
              "SignedHeaders=host;range, Signature=abcd");
}

}  // namespace
