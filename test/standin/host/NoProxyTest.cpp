#include "webproxy/NoProxy.hpp"

#include <gtest/gtest.h>

#include <string>

namespace {

using webproxy::Address;
using webproxy::isListed;

struct Listing {
    const char* name;
    std::string list;
    Address address;
    bool listed;
};

const Address s3{"s3.amazonaws.com", 443};

const Listing listings[] = {
    {"EmptyList", "", s3, false},
    {"OnlySeparators", " ,, \t", s3, false},
    {"Everything", "*", s3, true},
    {"EverythingAmongOthers", "localhost,*", s3, true},
    {"TheName", "s3.amazonaws.com", s3, true},
    {"TheNameInCapitals", "S3.AmazonAWS.com", s3, true},
    {"AnAddressInCapitals", "amazonaws.com", {"S3.AMAZONAWS.COM", 443}, true},
    {"AParent", "amazonaws.com", s3, true},
    {"AParentWithDot", ".amazonaws.com", s3, true},
    {"AParentWithStar", "*.amazonaws.com", s3, true},
    {"TheTopLevel", "com", s3, true},
    {"ATrailingDot", "amazonaws.com.", s3, true},
    {"AnAddressWithTrailingDot", "amazonaws.com", {"s3.amazonaws.com.", 443}, true},
    {"HalfALabel", "zonaws.com", s3, false},
    {"AChild", "eu.s3.amazonaws.com", s3, false},
    {"AnotherName", "localhost,example.com", s3, false},
    {"SeparatedByComma", "a.b,amazonaws.com,c.d", s3, true},
    {"SeparatedByBlanks", "a.b  amazonaws.com\tc.d", s3, true},
    {"SeparatedByBoth", "a.b, amazonaws.com , c.d", s3, true},
    {"ThePort", "amazonaws.com:443", s3, true},
    {"AnotherPort", "amazonaws.com:80", s3, false},
    {"APortOnly", ":443", s3, false},
    {"ADotOnly", ".", s3, false},
    {"Ipv4", "127.0.0.1", {"127.0.0.1", 9000}, true},
    {"Ipv4WithPort", "127.0.0.1:9000", {"127.0.0.1", 9000}, true},
    {"EndOfIpv4", "0.1", {"127.0.0.1", 9000}, false},
    {"Ipv6", "::1", {"::1", 9000}, true},
    {"Ipv6InBrackets", "[::1]", {"::1", 9000}, true},
    {"Ipv6WithPort", "[::1]:9000", {"::1", 9000}, true},
    {"Ipv6WithAnotherPort", "[::1]:9001", {"::1", 9000}, false},
    {"AnotherIpv6", "fe80::1", {"::1", 9000}, false},
};

class NoProxy : public testing::TestWithParam<Listing> {};

TEST_P(NoProxy, IsMatchedByNameAndPort) {
    EXPECT_EQ(isListed(GetParam().list, GetParam().address), GetParam().listed);
}

INSTANTIATE_TEST_SUITE_P(WebProxy, NoProxy, testing::ValuesIn(listings),
                         [](const auto& example) { return example.param.name; });

}  // namespace
