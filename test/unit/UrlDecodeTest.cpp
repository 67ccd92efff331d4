#include "UrlDecode.hpp"

#include <gtest/gtest.h>

#include <sstream>

using storage::s3provider::urlDecode;

TEST(UrlDecode, TurnsPlusesIntoBlanksBeforePercentSequences) {
    EXPECT_EQ(urlDecode("a+b%2Bc%25d"), "a b+c%d");
}

TEST(UrlDecode, LeavesTextWithoutEncodingAlone) {
    EXPECT_EQ(urlDecode(""), "");
    EXPECT_EQ(urlDecode("plain/name-1.txt"), "plain/name-1.txt");
}

TEST(UrlDecode, DecodesOnce) {
    EXPECT_EQ(urlDecode("%252B"), "%2B");
}

TEST(UrlDecode, KeepsAPercentWithoutTwoCharactersAfterIt) {
    EXPECT_EQ(urlDecode("%"), "%");
    EXPECT_EQ(urlDecode("a%"), "a%");
    EXPECT_EQ(urlDecode("a%4"), "a%4");
}

TEST(UrlDecode, ConsumesTwoCharactersWhateverTheyAre) {
    using namespace std::string_literals;
    EXPECT_EQ(urlDecode("%4z!"), "\x04!");
    EXPECT_EQ(urlDecode("%zz!"), "\0!"s);
    EXPECT_EQ(urlDecode("%z4!"), "\0!"s);
    EXPECT_EQ(urlDecode("%-1!"), "\xFF!");
    EXPECT_EQ(urlDecode("%+5!"), "\x05!");  // a blank by then, which the number may follow
    EXPECT_EQ(urlDecode("%%41"),
              "\0"
              "1"s);
}

// What a stream set to hexadecimal reads from two characters is the definition; digits take a shorter way.
TEST(UrlDecode, ReadsEveryPairOfCharactersAsAStreamWould) {
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string pair{static_cast<char>(first), static_cast<char>(second)};
            if (pair.find('+') != std::string::npos) continue;
            std::istringstream in(pair);
            unsigned value = 0;
            in >> std::hex >> value;
            EXPECT_EQ(urlDecode("%" + pair), std::string(1, static_cast<char>(value)))
                << first << ' ' << second;
        }
    }
}
