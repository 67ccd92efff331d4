#include "auth/Payload.hpp"

#include <gmock/gmock.h>

#include <cstring>

#include "PublishedRequests.hpp"
#include "Refusal.hpp"
#include "auth/Authentication.hpp"
#include "text/Digest.hpp"
#include "text/Encoding.hpp"

namespace s3server::test {
namespace {

constexpr std::uint64_t noLimit = std::uint64_t{1} << 40U;

Request requestWith(const Headers& headers) {
    Request request;
    request.headers = headers;
    return request;
}

/// Hands the body over in pieces of at most `step` bytes.
Payload receive(const Request& request, std::string_view body, std::size_t step = 4096,
                std::optional<ChunkSignatures> signatures = std::nullopt, std::uint64_t limit = noLimit) {
    PayloadReceiver receiver(request, limit, std::move(signatures));
    while (!body.empty()) {
        const auto space = receiver.space();
        const auto count = std::min({space.size, body.size(), step});
        std::memcpy(space.data, body.data(), count);
        receiver.commit(count);
        body.remove_prefix(count);
    }
    return receiver.finish(request);
}

Payload receivePublished(const Request& request, const std::string& body, std::size_t step) {
    return receive(request, body, step, authenticate(request, {publishedKeys}, publishedTime).chunks);
}

Request trailerRequest(const std::string& length) {
    return requestWith({{"x-amz-content-sha256", "STREAMING-UNSIGNED-PAYLOAD-TRAILER"},
                        {"x-amz-decoded-content-length", length},
                        {"x-amz-trailer", "x-amz-checksum-crc32"}});
}

TEST(Payload, IsTheBodyAndItsMd5) {
    const Payload payload = receive(requestWith({{"content-length", "3"}}), "abc");
    EXPECT_EQ(payload.bytes.text(), "abc");
    EXPECT_EQ(hex(payload.md5), "900150983cd24fb0d6963f7d28e17f72");
}

TEST(Payload, MustHaveTheHashThatWasSigned) {
    const std::string hash = hex(digestOf(Digest::sha256(), "abc"));
    EXPECT_EQ(codeOf([&] { receive(requestWith({{"x-amz-content-sha256", hash}}), "abc"); }), "");
    EXPECT_EQ(codeOf([&] {
                  receive(requestWith({{"x-amz-content-sha256", hash}}), "abd");
              }),
              "XAmzContentSHA256Mismatch");
    EXPECT_EQ(codeOf([&] {
                  receive(requestWith({{"x-amz-content-sha256", "UNSIGNED-PAYLOAD"}}), "abd");
              }),
              "");
}

TEST(Payload, WithAHashThatIsNoneIsRefusedBeforeTheBody) {
    EXPECT_EQ(codeOf([] {
                  PayloadReceiver(requestWith({{"x-amz-content-sha256", "abc"}}), 1, {});
              }),
              "InvalidArgument");
    EXPECT_EQ(codeOf([] {
                  PayloadReceiver(requestWith({{"x-amz-content-sha256", "STREAMING-ELSE"}}), 1, {});
              }),
              "NotImplemented");
}

TEST(Payload, AboveItsLimitIsRefusedWhenItIsAnnouncedOrWhenItComes) {
    EXPECT_EQ(codeOf([] {
                  PayloadReceiver(requestWith({{"content-length", "4"}}), 3, {});
              }),
              "EntityTooLarge");
    EXPECT_EQ(codeOf([] { receive(requestWith({}), "abcd", 4096, std::nullopt, 3); }), "EntityTooLarge");
}

TEST(Payload, ShorterThanAnnouncedIsIncomplete) {
    EXPECT_EQ(codeOf([] { receive(requestWith({{"content-length", "4"}}), "abc"); }), "IncompleteBody");
}

TEST(SignedChunks, OfThePublishedExampleAreAcceptedHoweverTheyArrive) {
    for (const std::size_t step : {std::size_t{1}, std::size_t{7}, std::size_t{4096}, std::size_t{100000}}) {
        const Payload payload = receivePublished(publishedChunkedPut(), publishedChunkedBody(), step);
        EXPECT_EQ(payload.bytes.text(), std::string(66560, 'a'));
    }
}

TEST(SignedChunks, WithAByteChangedAreRefused) {
    std::string body = publishedChunkedBody();
    body[body.size() / 2] = 'b';
    EXPECT_EQ(codeOf([&] { receivePublished(publishedChunkedPut(), body, 4096); }), "SignatureDoesNotMatch");
}

TEST(SignedChunks, WithoutTheLastAreIncomplete) {
    const std::string body = publishedChunkedBody();
    EXPECT_EQ(codeOf([&] {
                  receivePublished(publishedChunkedPut(), body.substr(0, body.rfind("\r\n0;") + 2), 4096);
              }),
              "IncompleteBody");
}

TEST(UnsignedChunks, EndWithACheckedTrailer) {
    EXPECT_EQ(receive(trailerRequest("9"),
                      "4\r\n1234\r\n5\r\n56789\r\n0\r\nx-amz-checksum-crc32:y/Q5Jg==\r\n\r\n", 3)
                  .bytes.text(),
              "123456789");
    EXPECT_EQ(codeOf([] {
                  receive(trailerRequest("9"),
                          "9\r\n123456780\r\n0\r\nx-amz-checksum-crc32:y/Q5Jg==\r\n\r\n");
              }),
              "BadDigest");
    EXPECT_EQ(codeOf([] { receive(trailerRequest("9"), "9\r\n123456789\r\n0\r\n\r\n"); }),
              "MalformedTrailerError");
}

TEST(UnsignedChunks, MustHaveTheDecodedLength) {
    EXPECT_EQ(codeOf([] { receive(trailerRequest("4"), "3\r\nabc\r\n0\r\n\r\n"); }), "IncompleteBody");
    EXPECT_EQ(codeOf([] {
                  PayloadReceiver(
                      requestWith({{"x-amz-content-sha256", "STREAMING-UNSIGNED-PAYLOAD-TRAILER"}}), 1, {});
              }),
              "MissingContentLength");
}

TEST(UnsignedChunks, ThatAreMalformedAreRefused) {
    for (const char* const body : {"zz\r\nabc", "3\nabc", "3\r\nabcd\r\n", "-3\r\nabc\r\n", "0x3\r\nabc\r\n",
                                   "\r\n", "10000000000000000\r\n", "0\r\n\r\nmore"})
        EXPECT_EQ(codeOf([body] { receive(trailerRequest("3"), body); }), "InvalidRequest") << body;
}

}  // namespace
}  // namespace s3server::test
