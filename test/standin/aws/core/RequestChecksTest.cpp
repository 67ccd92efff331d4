#include "core/RequestChecks.hpp"

#include <gtest/gtest.h>

#include "core/UnsendableRequest.hpp"

using namespace standin::aws;

namespace {

TEST(Authority, NamesAHostWithOrWithoutPort) {
    for (const char* const text : {"localhost", "S3.Example.COM", "127.0.0.1:9000", "[::1]:9000", "a-b_c.d"})
        EXPECT_TRUE(isAuthority(text)) << text;
}

TEST(Authority, HoldsNothingThatWouldEndItOrMeanAnotherHost) {
    for (const char* const text : {"", "user@host", "host/path", "host?query", "host#part", "a b", "a\nb",
                                   "a%62", "caf\xc3\xa9", "host\\x"})
        EXPECT_FALSE(isAuthority(text)) << text;
}

TEST(HeaderValues, AreAnythingButControlCharacters) {
    EXPECT_NO_THROW(checkHeaders({{"a", ""}, {"b", "x\ty z"}, {"c", "caf\xc3\xa9"}}));
    for (const char c : {'\r', '\n', '\0', '\x1f', '\x7f'})
        EXPECT_THROW(checkHeaders({{"a", std::string("x") + c}}), UnsendableRequest) << int{c};
}

TEST(RangeLength, IsTheNumberOfBytesAskedFor) {
    EXPECT_EQ(rangeLength({{"range", "bytes=0-0"}}), 1U);
    EXPECT_EQ(rangeLength({{"range", "bytes=10-19"}}), 10U);
    EXPECT_EQ(rangeLength({{"range", "bytes=-500"}}), 500U);
    EXPECT_EQ(rangeLength({{"range", "bytes=1-18446744073709551615"}}), 18446744073709551615U);
}

TEST(RangeLength, IsNothingForRangesOfOtherForms) {
    EXPECT_EQ(rangeLength({}), std::nullopt);
    for (const char* const range :
         {"", "bytes=", "bytes=-", "bytes=5-", "bytes=5", "bytes=9-5", "bytes=0-1,4-5", "bytes=a-b",
          "lines=0-9", "bytes=0-18446744073709551615", "bytes=0-18446744073709551616"})
        EXPECT_EQ(rangeLength({{"range", range}}), std::nullopt) << range;
}

TEST(ContentLength, IsAWholeNumberOrNothing) {
    EXPECT_EQ(contentLength({}), std::nullopt);
    EXPECT_EQ(contentLength({{"content-length", "0"}}), 0U);
    EXPECT_EQ(contentLength({{"content-length", "18446744073709551615"}}), 18446744073709551615U);
    for (const char* const text : {"", "-1", "+1", " 1", "1x", "18446744073709551616"})
        EXPECT_THROW(contentLength({{"content-length", text}}), UnsendableRequest) << text;
}

}  // namespace
