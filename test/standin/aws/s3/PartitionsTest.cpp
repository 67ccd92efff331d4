#include <aws/s3/S3EndpointProvider.h>
#include <gtest/gtest.h>

#include <ostream>

namespace {

struct PartitionRow {
    const char* name;
    const char* region;
    const char* endpoint;  ///< of the region, without bucket
};

void PrintTo(const PartitionRow& row, std::ostream* out) {
    *out << row.name;
}

constexpr PartitionRow rows[] = {
    {"Commercial", "eu-west-3", "s3.eu-west-3.amazonaws.com"},
    {"China", "cn-northwest-1", "s3.cn-northwest-1.amazonaws.com.cn"},
    {"GovCloud", "us-gov-east-1", "s3.us-gov-east-1.amazonaws.com"},
};

class Partition : public ::testing::TestWithParam<PartitionRow> {
protected:
    /// Empty when there is none.
    static std::string endpointOf(const std::string& bucket) {
        Aws::Client::ClientConfiguration configuration;
        configuration.region = GetParam().region;
        Aws::S3::Endpoint::S3EndpointProvider endpoints;
        endpoints.InitBuiltInParameters(Aws::S3::S3ClientConfiguration(configuration));
        const auto endpoint = endpoints.ResolveEndpoint({Aws::Endpoint::EndpointParameter("Bucket", bucket)});
        return endpoint.IsSuccess() ? endpoint.GetResult().GetURL() : "";
    }

    const std::string service = GetParam().endpoint;
};

TEST_P(Partition, HasABucketOfAHostsNameInTheHost) {
    EXPECT_EQ(endpointOf("my-data"), "https://my-data." + service);
}

TEST_P(Partition, HasADottedBucketInThePath) {
    EXPECT_EQ(endpointOf("my.data"), "https://" + service + "/my.data");
}

TEST_P(Partition, HasABucketThatIsNoHostsNameInThePath) {
    for (const std::string bucket : {"My_Data", "-data", "10.0.0.1"})
        EXPECT_EQ(endpointOf(bucket), "https://" + service + "/" + bucket);
}

INSTANTIATE_TEST_SUITE_P(All, Partition, ::testing::ValuesIn(rows),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
