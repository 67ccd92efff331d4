#include <aws/core/config/AWSProfileConfigLoader.h>
#include <aws/s3/model/GetBucketLocationRequest.h>

#include "AwsS3ClientFactory.hpp"
#include "ConfigurationSources.hpp"
#include "EnvironmentText.hpp"

namespace storage::s3provider {

using Aws::S3::Model::BucketLocationConstraint;
using Aws::S3::Model::GetBucketLocationOutcome;

std::string regionProfile() {
    std::string profile = environmentText("AWS_PROFILE");
    return profile.empty() ? "default" : profile;
}

std::string regionFrom(const RegionSource& source) {
    if (source.variable) return environmentText(source.variable);
    return regionFromProfileFile(source.fileName(), regionProfile());
}

std::string regionFromEnvironment() {
    for (const RegionSource& source : regionSources) {
        if (std::string region = regionFrom(source); !region.empty()) return region;
    }
    return {};
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): its callers give both away
std::string regionFromProfileFile(std::string fileName, std::string profile) {
    Aws::Config::AWSConfigFileProfileConfigLoader file(fileName, false);
    if (!file.Load()) return {};
    const auto& profiles = file.GetProfiles();
    const auto found = profiles.find(profile);
    return found == profiles.end() ? std::string() : found->second.GetRegion();
}

std::string bucketLookupRegion() {
    std::string region = environmentText("ZR_AWS_GETLOCATION_REGION");
    return region.empty() ? "us-east-2" : region;
}

GetBucketLocationOutcome askBucketLocation(Aws::S3::S3Client& client, const std::string& bucket) {
    Aws::S3::Model::GetBucketLocationRequest request;
    request.SetBucket(bucket);
    return client.GetBucketLocation(request);
}

std::string queryBucketRegion(Aws::S3::S3Client& client, const std::string& bucket) {
    return regionFrom(askBucketLocation(client, bucket));
}

std::string regionFrom(const GetBucketLocationOutcome& outcome) {
    if (!outcome.IsSuccess()) return {};
    const auto constraint = outcome.GetResult().GetLocationConstraint();
    if (constraint == BucketLocationConstraint::NOT_SET) return "us-east-1";
    return Aws::S3::Model::BucketLocationConstraintMapper::GetNameForBucketLocationConstraint(constraint);
}

}  // namespace storage::s3provider
