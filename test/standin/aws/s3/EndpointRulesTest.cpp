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
    {"Global", "aws-global", "", "data", "https://data.s3.amazonaws.com"},
    {"China", "cn-north-1", "", "data", "https://data.s3.cn-north-1.amazonaws.com.cn"},
    {"AllOfChina", "aws-cn-global", "", "data", "https://data.s3.aws-cn-global.amazonaws.com.cn"},
    {"GovCloud", "us-gov-west-1", "", "data", "https://data.s3.us-gov-west-1.amazonaws.com"},
    {"Iso", "us-iso-east-1", "", "data", "https://data.s3.us-iso-east-1.c2s.ic.gov"},
    {"AllOfIso", "aws-iso-global", "", "data", "https://data.s3.aws-iso-global.c2s.ic.gov"},
    {"IsoB", "us-isob-east-1", "", "data", "https://data.s3.us-isob-east-1.sc2s.sgov.gov"},
    {"AllOfIsoB", "aws-iso-b-global", "", "data", "https://data.s3.aws-iso-b-global.sc2s.sgov.gov"},
    {"IsoE", "eu-isoe-west-1", "", "data", "https://data.s3.eu-isoe-west-1.cloud.adc-e.uk"},
    {"IsoF", "us-isof-south-1", "", "data", "https://data.s3.us-isof-south-1.csp.hci.ic.gov"},
    {"UnknownPartition", "xx-yy-1", "", "data", "https://data.s3.xx-yy-1.amazonaws.com"},
    {"NotQuiteChina", "cn-x", "", "data", "https://data.s3.cn-x.amazonaws.com"},
    {"NotQuiteIso", "us-iso-1", "", "data", "https://data.s3.us-iso-1.amazonaws.com"},
    {"FipsInFront", "fips-us-gov-west-1", "", "data", "https://data.s3-fips.us-gov-west-1.amazonaws.com"},
    {"FipsBehind", "us-east-1-fips", "", "data", "https://data.s3-fips.us-east-1.amazonaws.com"},
    {"FipsGlobal", "fips-aws-global", "", "data", "https://data.s3-fips.us-east-1.amazonaws.com"},
    {"FipsInChina", "fips-cn-north-1", "", "data", ""},
    {"FipsAtAnOverride", "fips-us-east-1", "http://127.0.0.1:9000", "data", ""},
    {"DottedBucketInChina", "cn-north-1", "", "my.data", "https://s3.cn-north-1.amazonaws.com.cn/my.data"},
    {"DottedBucketInThePath", "eu-west-3", "", "my.data", "https://s3.eu-west-3.amazonaws.com/my.data"},
    {"AddressInThePath", "eu-west-3", "", "10.0.0.1", "https://s3.eu-west-3.amazonaws.com/10.0.0.1"},
    {"UnderscoreInThePath", "eu-west-3", "", "my_data", "https://s3.eu-west-3.amazonaws.com/my_data"},
    {"CapitalsInThePath", "eu-west-3", "", "Data", "https://s3.eu-west-3.amazonaws.com/Data"},
    {"TooShortForAnOutpost", "eu-west-3", "", "data--op-s3",
     "https://data--op-s3.s3.eu-west-3.amazonaws.com"},
    {"NotQuiteADirectory", "eu-west-3", "", "data-x-s3", "https://data-x-s3.s3.eu-west-3.amazonaws.com"},
    {"AliasOfAnAccessPoint", "eu-west-3", "", "data-s3alias",
     "https://data-s3alias.s3.eu-west-3.amazonaws.com"},
    {"OverrideByName", "eu-west-3", "http://localhost:9000", "data", "http://data.localhost:9000"},
    {"OverrideByAddress", "eu-west-3", "http://127.0.0.1:9000", "data", "http://127.0.0.1:9000/data"},
    {"OverrideWithPath", "eu-west-3", "https://gateway.example/s3", "data",
     "https://data.gateway.example/s3"},
    {"OverrideWithTheSchemesOwnPort", "eu-west-3", "http://127.0.0.1:80", "data", "http://127.0.0.1/data"},
    {"OverrideWithAnEmptyQuery", "eu-west-3", "http://127.0.0.1:9000/s3/?", "data",
     "http://127.0.0.1:9000/s3/data"},
    {"OverrideWithAHashInThePath", "eu-west-3", "http://127.0.0.1/a#b", "data", "http://127.0.0.1/a#b/data"},
    {"OverrideWithAQuery", "eu-west-3", "http://127.0.0.1:9000/?a=b", "data", ""},
    {"OverrideWithTwoQuestionMarks", "eu-west-3", "http://127.0.0.1:9000/??", "data", ""},
    {"OverrideWithAnAddressInNoBrackets", "eu-west-3", "http://::1", "data", ""},
    {"OverrideWithABlankAtItsEnd", "eu-west-3", "http://127.0.0.1:9000 ", "data", ""},
    {"OverrideWithAWordForAPort", "eu-west-3", "http://127.0.0.1:http", "data", ""},
    {"OverrideWithTwoPorts", "eu-west-3", "http://127.0.0.1:9000:9001", "data", ""},
    {"NoRegion", "", "", "data", ""},
    {"HostileRegion", "@evil.example#", "", "data", ""},
    {"HostileRegionBesideADottedBucket", "@evil.example#", "", "my.data", ""},
    {"HostileRegionAtAnOverride", "@evil.example#", "http://127.0.0.1:9000", "Data", ""},
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

struct OtherBucket {
    const char* bucket;
    const char* message;
};

constexpr OtherBucket otherBuckets[] = {
    {"name--use1-az4--x-s3", "Directory buckets are not supported: `name--use1-az4--x-s3`"},
    {"NAME--x-s3", "Directory buckets are not supported: `NAME--x-s3`"},
    {"test-accessp-o0b1d075431d83bebde8xz5w8ijx1qzlbp3i3kuse10--op-s3",
     "Access points of Outposts are not supported: "
     "`test-accessp-o0b1d075431d83bebde8xz5w8ijx1qzlbp3i3kuse10--op-s3`"},
    {"arn:aws:s3:us-east-1:123456789012:accesspoint/name",
     "Access points are not supported: `arn:aws:s3:us-east-1:123456789012:accesspoint/name`"},
    {"arn:aws:s3-object-lambda:us-east-1:123456789012:accesspoint:name",
     "Access points are not supported: `arn:aws:s3-object-lambda:us-east-1:123456789012:accesspoint:name`"},
    {"arn:aws:s3::123456789012:accesspoint:name.mrap",
     "Access points are not supported: `arn:aws:s3::123456789012:accesspoint:name.mrap`"},
    {"arn:aws:s3:eu-west-1:123456789012:accesspoint:name",
     "Invalid configuration: region from ARN `eu-west-1` does not match client region `us-east-1` and "
     "UseArnRegion is `false`"},
    {"arn:aws:s3:::data", "Invalid ARN: Unrecognized format: arn:aws:s3:::data (type: data)"},
    {"arn:aws:s3:us-east-1:123456789012:bucket/data",
     "Invalid ARN: Unrecognized format: arn:aws:s3:us-east-1:123456789012:bucket/data (type: bucket)"},
    {"arn:aws:s3", "Invalid ARN: `arn:aws:s3` was not a valid ARN"},
};

TEST(BucketsOfOtherKinds, AreRefusedByTheirNamesWhateverTheEndpoint) {
    for (const char* const endpointOverride : {"", "http://127.0.0.1:9000", "http://localhost:9000"}) {
        for (const auto& [bucket, message] : otherBuckets) {
            EndpointInput input;
            input.region = "us-east-1";
            input.endpointOverride = endpointOverride;
            input.bucket = bucket;
            const auto resolved = resolveEndpoint(input);
            const auto* failure = std::get_if<EndpointFailure>(&resolved);
            EXPECT_EQ(failure ? failure->message : "resolved", message) << endpointOverride;
        }
    }
}

TEST(BucketsOfOtherKinds, HaveNoArnInAPath) {
    EndpointInput input;
    input.region = "us-east-1";
    input.forcePathStyle = true;
    input.bucket = "arn:aws:s3:us-east-1:123456789012:accesspoint:name";
    EXPECT_EQ(std::get<EndpointFailure>(resolveEndpoint(input)).message,
              "Path-style addressing cannot be used with ARN buckets");
}

TEST(DualStack, HasAHostNameOfItsOwn) {
    EndpointInput input;
    input.region = "us-east-1";
    input.bucket = "data";
    input.useDualStack = true;
    input.useGlobalEndpoint = true;
    const auto resolved = resolveEndpoint(input);
    EXPECT_EQ(toString(std::get<ResolvedEndpoint>(resolved).url),
              "https://data.s3.dualstack.us-east-1.amazonaws.com");
}

TEST(DualStack, DoesNotGoWithAnEndpointOfOnesOwn) {
    EndpointInput input;
    input.region = "us-east-1";
    input.endpointOverride = "http://127.0.0.1:9000";
    input.useDualStack = true;
    const auto resolved = resolveEndpoint(input);
    EXPECT_EQ(std::get<EndpointFailure>(resolved).message,
              "Cannot set dual-stack in combination with a custom endpoint.");
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
