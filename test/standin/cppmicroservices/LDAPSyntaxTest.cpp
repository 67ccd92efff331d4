#include <cppmicroservices/AnyMap.h>
#include <cppmicroservices/LDAPFilter.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

// What the stand-in has of its own: the RFC's escapes, and errors that tell what is wrong.
namespace {

using cppmicroservices::AnyMap;
using cppmicroservices::LDAPFilter;
using testing::HasSubstr;

std::string errorOf(const std::string& filter) {
    try {
        LDAPFilter parsed(filter);
        return "none";
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
}

TEST(LDAPSyntax, ReadsHexadecimalEscapes) {
    AnyMap map(AnyMap::ORDERED_MAP);
    map["odd"] = std::string("a*b(c)\\\xc3\xa9");
    map["zero"] = std::string("a\0b", 3);
    EXPECT_TRUE(LDAPFilter("(odd=a\\2ab\\28c\\29\\5C\\c3\\A9)").Match(map));
    EXPECT_TRUE(LDAPFilter("(odd=a\\2a*)").Match(map));
    EXPECT_FALSE(LDAPFilter("(odd=a\\2a)").Match(map));
    EXPECT_TRUE(LDAPFilter("(zero=a\\00b)").Match(map));
}

TEST(LDAPSyntax, TellsWhatIsWrongAndWhere) {
    EXPECT_EQ(errorOf("(a=b"), "filter '(a=b': a value ends with ')', at character 5");
    EXPECT_EQ(errorOf("a=b"), "filter 'a=b': a filter begins with '(', at character 1");
    EXPECT_EQ(errorOf("(a=b)x"), "filter '(a=b)x': nothing may follow the filter, at character 6");
    EXPECT_EQ(errorOf("(=b)"), "filter '(=b)': a name is missing, at character 2");
    EXPECT_THAT(errorOf("(a=\\z1)"), HasSubstr("'\\' is followed by two hexadecimal digits"));
    EXPECT_THAT(errorOf("(a=\\2)"), HasSubstr("'\\' is followed by two hexadecimal digits"));
}

TEST(LDAPSyntax, RefusesComparisonsThatItDoesNotHave) {
    for (const char* filter : {"(a>=1)", "(a<=1)", "(a~=b)", "(a:=b)", "(a:dn:2.4.6:=b)"})
        EXPECT_THAT(errorOf(filter), HasSubstr("other comparisons aren't supported, at character 3"))
            << filter;
}

TEST(LDAPSyntax, RefusesFiltersThatLieTooDeep) {
    const auto nested = [](int depth) {
        const auto count = static_cast<std::size_t>(depth - 1);
        std::string text;
        for (std::size_t i = 0; i < count; ++i)
            text += "(!";
        return text + "(a=b)" + std::string(count, ')');
    };
    EXPECT_EQ(errorOf(nested(64)), "none");
    EXPECT_THAT(errorOf(nested(65)), HasSubstr("too many filters lie in each other"));
    EXPECT_THAT(errorOf(nested(1'000'000)), HasSubstr("too many filters lie in each other"));
}

TEST(LDAPSyntax, KeepsItsText) {
    EXPECT_EQ(LDAPFilter("(&(a=b)(c=*))").ToString(), "(&(a=b)(c=*))");
}

}  // namespace
