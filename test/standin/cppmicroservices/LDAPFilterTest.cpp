#include <cppmicroservices/Any.h>
#include <cppmicroservices/AnyMap.h>
#include <cppmicroservices/LDAPFilter.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using cppmicroservices::Any;
using cppmicroservices::AnyMap;
using cppmicroservices::LDAPFilter;

AnyMap properties() {
    AnyMap map(AnyMap::UNORDERED_MAP);
    map["Name"] = std::string("aws-sdk-cpp");
    map["odd"] = std::string("a*b(c)\\");
    map["blank"] = std::string(" a b ");
    map["empty"] = std::string();
    map["nothing"] = Any();
    map["accent"] = std::string("\xc3\xa9");
    map["count"] = 5;
    map["large"] = 7L;
    map["ratio"] = 1.5;
    map["on"] = true;
    map["words"] = std::vector<std::string>{"short", "polite"};
    map["mixed"] = std::vector<Any>{Any(std::string("x")), Any(3)};
    return map;
}

struct Filter {
    const char* text;
    bool matches;
};

const Filter filters[] = {
    // equality
    {"(name=aws-sdk-cpp)", true},
    {"(NAME=aws-sdk-cpp)", true},
    {"(name=AWS-SDK-CPP)", false},
    {"(name=aws-sdk-cpp )", false},
    {"(name=aws)", false},
    {"(other=aws-sdk-cpp)", false},
    {"(other=)", false},
    {"(empty=)", true},
    {"(blank= a b )", true},
    {"(blank=a b)", false},
    {"(accent=\xc3\xa9)", true},
    // other types
    {"(count=5)", true},
    {"(count=05)", true},
    {"(count=6)", false},
    {"(count=5*)", true},
    {"(count=6*)", false},
    {"(large=7)", true},
    {"(ratio=1.5)", true},
    {"(ratio=1.25)", false},
    {"(on=true)", true},
    {"(on=TRUE)", true},
    {"(on=false)", false},
    {"(on=t*)", false},
    {"(words=polite)", true},
    {"(words=pol*)", true},
    {"(words=rude)", false},
    {"(mixed=x)", true},
    {"(mixed=3)", true},
    {"(mixed=4)", false},
    {"(nothing=)", false},
    // presence
    {"(name=*)", true},
    {"(count=*)", true},
    {"(empty=*)", true},
    {"(words=*)", true},
    {"(nothing=*)", false},
    {"(other=*)", false},
    // substrings
    {"(name=aws*)", true},
    {"(name=*cpp)", true},
    {"(name=*sdk*)", true},
    {"(name=a*s*p)", true},
    {"(name=**)", true},
    {"(name=aws-sdk-cpp*)", true},
    {"(name=sdk*)", false},
    {"(name=*sdk)", false},
    {"(name=*cpp*sdk*)", false},
    {"(name=aws-sdk-cpp*p)", false},
    // combinations
    {"(&(name=aws*)(count=5))", true},
    {"(&(name=aws*)(count=6))", false},
    {"(|(name=other)(count=5))", true},
    {"(|(name=other)(count=6))", false},
    {"(!(count=6))", true},
    {"(!(count=5))", false},
    {"(!(other=*))", true},
    {"(&(count=5))", true},
    {"(&(|(name=x)(!(count=6)))(!(&(on=true)(count=6))))", true},
    {" ( & (count=5) (on=true) ) ", true},
    // escapes
    {"(odd=a\\*b\\(c\\)\\\\)", true},
    {"(odd=a\\**)", true},
    {"(odd=a\\*)", false},
    {"(name=aws\\*)", false},
};

TEST(LDAPFilter, MatchesAsItsTextSays) {
    for (const Filter& filter : filters)
        EXPECT_EQ(LDAPFilter(filter.text).Match(properties()), filter.matches) << filter.text;
}

TEST(LDAPFilter, LooksAtTheCaseOfNamesWhenItIsTold) {
    EXPECT_TRUE(LDAPFilter("(Name=aws*)").MatchCase(properties()));
    EXPECT_FALSE(LDAPFilter("(name=aws*)").MatchCase(properties()));
}

TEST(LDAPFilter, RefusesWhatIsMalformed) {
    for (const char* text : {"",        "()",     "(a)",           "a=b",     "(a=b", "(a=b))", "(&)",
                             "(|)",     "(!)",    "(!(a=b)(c=d))", "(&(a=b)", "(=b)", "(a=b)x", "(a=b)(c=d)",
                             "(a=b(c)", "(a=\\)", "(a>b)",         "(",       ")",    "(a",     "(a="})
        EXPECT_THROW(LDAPFilter{std::string(text)}, std::invalid_argument) << text;
}

TEST(LDAPFilter, MatchesNothingWithoutAText) {
    EXPECT_FALSE(LDAPFilter());
    EXPECT_FALSE(LDAPFilter().Match(properties()));
    EXPECT_TRUE(LDAPFilter("(a=b)"));
}

}  // namespace
