#include "store/Checksums.hpp"

#include <gmock/gmock.h>

#include "Refusal.hpp"
#include "text/Digest.hpp"

namespace s3server::test {
namespace {

std::string refusalFor(const std::string& header, const std::string& value) {
    const Bytes body(std::string("123456789"));
    return codeOf([&] { checkChecksums({{header, value}}, body, digestOf(Digest::md5(), body)); });
}

// The published check values of the algorithms for the text 123456789, in base64.
TEST(Checksums, AcceptTheRightOneOfEachKind) {
    EXPECT_EQ(refusalFor("content-md5", "JfnnlDI7RTiF9RgfG2JNCw=="), "");
    EXPECT_EQ(refusalFor("x-amz-checksum-crc32", "y/Q5Jg=="), "");
    EXPECT_EQ(refusalFor("x-amz-checksum-crc32c", "4waSgw=="), "");
    EXPECT_EQ(refusalFor("x-amz-checksum-crc64nvme", "rosUhgp5mIg="), "");
    EXPECT_EQ(refusalFor("x-amz-checksum-sha1", "98O8HYCOBHMq32eZZczDTKeuNEE="), "");
    EXPECT_EQ(refusalFor("x-amz-checksum-sha256", "FeKw08M4keuw8e9gnsQZQgwg4yDOlMZfvIwzEkSOsiU="), "");
}

TEST(Checksums, RefuseAWrongOneOfEachKind) {
    EXPECT_EQ(refusalFor("content-md5", "AAAAAAAAAAAAAAAAAAAAAA=="), "BadDigest");
    EXPECT_EQ(refusalFor("x-amz-checksum-crc32", "AAAAAA=="), "BadDigest");
    EXPECT_EQ(refusalFor("x-amz-checksum-crc32c", "AAAAAA=="), "BadDigest");
    EXPECT_EQ(refusalFor("x-amz-checksum-crc64nvme", "AAAAAAAAAAA="), "BadDigest");
    EXPECT_EQ(refusalFor("x-amz-checksum-sha1", "AAAAAAAAAAAAAAAAAAAAAAAAAAA="), "BadDigest");
    EXPECT_EQ(refusalFor("x-amz-checksum-sha256", "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA="),
              "BadDigest");
}

TEST(Checksums, RefuseWhatIsNoChecksum) {
    EXPECT_EQ(refusalFor("content-md5", "not base64"), "InvalidDigest");
    EXPECT_EQ(refusalFor("content-md5", "y/Q5Jg=="), "InvalidDigest");
    EXPECT_EQ(refusalFor("x-amz-checksum-crc32", "y/Q5JgAA"), "InvalidRequest");
}

TEST(Checksums, RefuseAKindTheyDontKnow) {
    EXPECT_EQ(refusalFor("x-amz-checksum-xxhash", "AAAAAAAAAAA="), "NotImplemented");
}

TEST(Checksums, TakeHeadersAboutChecksumsForNone) {
    EXPECT_EQ(refusalFor("x-amz-checksum-mode", "ENABLED"), "");
    EXPECT_EQ(refusalFor("x-amz-checksum-algorithm", "CRC32"), "");
}

}  // namespace
}  // namespace s3server::test
