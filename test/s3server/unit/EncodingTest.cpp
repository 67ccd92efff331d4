#include "text/Encoding.hpp"

#include <gmock/gmock.h>

namespace s3server::test {
namespace {

using testing::Eq;
using testing::Optional;

TEST(PercentCoding, KeepsTheUnreservedCharactersOnly) {
    EXPECT_EQ(percentEncoded("aZ09-_.~ /+%\xc3\xbc"), "aZ09-_.~%20%2F%2B%25%C3%BC");
    EXPECT_EQ(percentEncoded("a/b c", "/"), "a/b%20c");
}

TEST(PercentCoding, IsUndoneExactlyOnce) {
    EXPECT_THAT(percentDecoded("a%2Bb+c%2525"), Optional(Eq("a+b+c%25")));
    EXPECT_THAT(queryDecoded("a%2Bb+c"), Optional(Eq("a+b c")));
    EXPECT_THAT(percentDecoded("%00%fF"), Optional(Eq(std::string("\0\xff", 2))));
}

TEST(PercentCoding, ThatIsBrokenIsNone) {
    for (const char* const text : {"%", "%4", "a%4z", "%zz", "%%41"})
        EXPECT_FALSE(percentDecoded(text)) << text;
}

TEST(ListingEncoding, IsThatOfAFormWithSlashesKept) {
    EXPECT_EQ(listingEncoded("a b/c+d~e*f(3).png\xc3\xbc"), "a+b/c%2Bd%7Ee*f%283%29.png%C3%BC");
}

TEST(Base64, GoesThereAndBack) {
    for (const std::string bytes : {"", "f", "fo", "foo", "foob", "\xff\xfe\xfd"})
        EXPECT_THAT(fromBase64(base64(bytes)), Optional(Eq(bytes)));
    EXPECT_EQ(base64("foob"), "Zm9vYg==");
}

TEST(Base64, ThatIsNotCanonicalIsNone) {
    for (const char* const text : {"Zg", "Zg=", "Zh==", "Z g==", " Zg==", "Zg==\n", "====", "Zg==Zg=="})
        EXPECT_FALSE(fromBase64(text)) << text;
}

TEST(Hex, IsInLowerCase) {
    EXPECT_EQ(hex(std::string("\x00\xab\xff", 3)), "00abff");
}

}  // namespace
}  // namespace s3server::test
