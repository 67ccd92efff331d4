#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/config/AWSProfileConfigLoader.h>
#include <aws/s3/model/GetBucketLocationRequest.h>

#include "AwsS3ClientFactory.hpp"
#include "EnvironmentText.hpp"

namespace storage::s3provider {

using Aws::S3::Model::BucketLocationConstraint;

namespace {

std::string chosenProfile() {
    std::string profile = environmentText("AWS_PROFILE");
    return profile.empty() ? "default" : profile;
}

}  // namespace

std::string regionFromEnvironment() {
    for (const char* const variable : {"AWS_DEFAULT_REGION", "AWS_REGION"}) {
        if (std::string region = environmentText(variable); !region.empty()) return region;
    }
    const std::string profile = chosenProfile();
    const std::string region = regionFromProfileFile(
        Aws::Auth::ProfileConfigFileAWSCredentialsProvider::GetCredentialsProfileFilename(), profile);
    if (!region.empty()) return region;
    return regionFromProfileFile(Aws::Auth::GetConfigProfileFilename(), profile);
}

std::string regionFromProfileFile(std::string fileName, std::string profile) {
    Aws::Config::AWSConfigFileProfileConfigLoader file(fileName, false);
    if (!file.Load()) return {};
    const auto& profiles = file.GetProfiles();
    const auto found = profiles.find(profile);
    return found == profiles.end() ? std::string() : found->second.GetRegion();
}

std::string queryBucketRegion(Aws::S3::S3Client& client, const std::string& bucket) {
    Aws::S3::Model::GetBucketLocationRequest request;
    request.SetBucket(bucket);
    const auto outcome = client.GetBucketLocation(request);
    if (!outcome.IsSuccess()) return {};
    const auto constraint = outcome.GetResult().GetLocationConstraint();
    if (constraint == BucketLocationConstraint::NOT_SET) return "us-east-1";
    return Aws::S3::Model::BucketLocationConstraintMapper::GetNameForBucketLocationConstraint(constraint);
}

}  // namespace storage::s3provider
