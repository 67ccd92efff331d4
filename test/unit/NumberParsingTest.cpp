#include "NumberParsing.hpp"

#include <gtest/gtest.h>

#include <stdexcept>

using storage::s3provider::parseInt;

TEST(ParseInt, AgreesWithTheStandardLibrary) {
    for (const char* text :
         {"0", "7", "-7", "+7", " \t\n7x", "007", "2147483647", "-2147483648", "1e3", "0x10"}) {
        EXPECT_EQ(parseInt(text), std::stoi(text)) << text;
    }
}

TEST(ParseInt, RefusesTextWithoutDigits) {
    for (const char* text : {"", " ", "-", "+", "x7", "- 7", "--7", "\xC3\xA4"}) {
        EXPECT_THROW(parseInt(text), std::invalid_argument) << text;
    }
}

TEST(ParseInt, RefusesNumbersBeyond32Bits) {
    for (const char* text : {"2147483648", "-2147483649", "9223372036854775808", "-99999999999999999999"}) {
        EXPECT_THROW(parseInt(text), std::out_of_range) << text;
    }
}
