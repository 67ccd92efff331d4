#include "s3/EndpointRules.hpp"

#include <gtest/gtest.h>

#include <ostream>

using namespace standin::aws::s3;

namespace {

struct EndpointRow {
    const char* name;
    const char* region;
    const char* endpointOverride;
    const char* bucket;
    const char* url;  ///< empty: refused
};

void PrintTo(const EndpointRow& row, std::ostream* out) {
    *out << row.name;
}

constexpr EndpointRow rows[] = {
    {"VirtualHost", "eu-west-3", "", "data", "https://data.s3.eu-west-3.amazonaws.com"},
    {"China", "cn-north-1", "", "data", "https://data.s3.cn-north-1.amazonaws.com.cn"},
    {"GovCloud", "us-gov-west-1", "", "data", "https://data.s3.us-gov-west-1.amazonaws.com"},
    {"DottedBucketInThePath", "eu-west-3", "", "my.data", "https://s3.eu-west-3.amazonaws.com/my.data"},
    {"CapitalsInThePath", "eu-west-3", "", "Data", "https://s3.eu-west-3.amazonaws.com/Data"},
    {"OverrideByName", "eu-west-3", "http://localhost:9000", "data", "http://data.localhost:9000"},
    {"OverrideByAddress", "eu-west-3", "http://127.0.0.1:9000", "data", "http://127.0.0.1:9000/data"},
    {"OverrideWithPath", "eu-west-3", "https://gateway.example/s3", "data",
     "https://data.gateway.example/s3"},
    {"NoRegion", "", "", "data", ""},
    {"HostileRegion", "@evil.example#", "", "data", ""},
    {"RegionWithDots", "../x", "", "data", ""},
    {"RegionThatIsAnAddress", "127.0.0.1", "", "data", ""},
};

}  // namespace

class EndpointRules : public ::testing::TestWithParam<EndpointRow> {};

TEST_P(EndpointRules, LeadToOnePlaceOrToNone) {
    EndpointInput input;
    input.region = GetParam().region;
    input.endpointOverride = GetParam().endpointOverride;
    input.bucket = GetParam().bucket;
    const auto resolved = resolveEndpoint(input);
    const auto* endpoint = std::get_if<ResolvedEndpoint>(&resolved);
    EXPECT_EQ(endpoint ? toString(endpoint->url) : "", GetParam().url);
}

INSTANTIATE_TEST_SUITE_P(Table, EndpointRules, ::testing::ValuesIn(rows),
                         [](const auto& row) { return std::string(row.param.name); });

TEST(VirtualHostable, IsWhatCanBeAHostName) {
    EXPECT_TRUE(isVirtualHostable("my-data-1", false));
    EXPECT_TRUE(isVirtualHostable("my.data", true));
    for (const char* bucket : {"", "ab", "My", "my_data", "-data", "data-", "my.data", "a@b", "a/b", "a#b"}) {
        EXPECT_FALSE(isVirtualHostable(bucket, false)) << bucket;
    }
    EXPECT_FALSE(isVirtualHostable("10.0.0.1", true));
    EXPECT_FALSE(isVirtualHostable("my..data", true));
    EXPECT_FALSE(isVirtualHostable(std::string(64, 'a'), false));
}
