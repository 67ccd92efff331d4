#include <aws/s3/model/BucketLocationConstraint.h>

#include <boost/algorithm/string/replace.hpp>

#include "AwsS3ClientFactory.hpp"
#include "ConfigurationSources.hpp"
#include "explain/Sections.hpp"
#include "explain/Wording.hpp"

namespace s3vfs::explain {

namespace {

/// A client for this region begins in us-east-1, and then signs for the region that S3 names.
constexpr const char* anyRegion = "aws-global";

/// An endpoint may hold a password, and the SDK quotes one that it can't use.
std::string withEndpointShown(std::string text) {
    const std::string endpoint = storage::s3provider::endpointOverride();
    if (!endpoint.empty()) boost::algorithm::replace_all(text, endpoint, addressShown(endpoint));
    return text;
}

std::string failureOf(const Answers& answers) {
    const auto& error = answers.location.GetError();
    const auto status = static_cast<int>(error.GetResponseCode());
    const auto told = [&](const std::string& text) {
        return shownWithout({answers.credentials.GetAWSSecretKey(), answers.credentials.GetSessionToken(),
                             answers.configuration.proxyPassword},
                            text);
    };
    const std::string message = told(withEndpointShown(error.GetMessage()));
    if (status < 0) return "no usable answer: " + message;
    return "answered " + std::to_string(status) + " " + told(error.GetExceptionName()) + ": " + message;
}

std::string locationText(const Answers& answers) {
    using namespace Aws::S3::Model::BucketLocationConstraintMapper;
    return GetNameForBucketLocationConstraint(answers.location.GetResult().GetLocationConstraint());
}

std::string regionOfLocation(const std::string& location) {
    if (location.empty()) return "us-east-1";
    return location == "EU" ? "eu-west-1" : location;
}

/// S3 names a bucket's region even to whom it refuses the location.
std::string regionInHeader(const Answers& answers) {
    const auto& headers = answers.location.GetError().GetResponseHeaders();
    const auto found = headers.find("x-amz-bucket-region");
    return found == headers.end() ? std::string() : found->second;
}

/// Adds what S3 said, and returns the region that it means; empty without one.
std::string addAnswer(Section& section, const Answers& answers) {
    const std::string name = "S3, asked by explain through " + shown(answers.lookupRegion);
    if (answers.location.IsSuccess()) {
        const std::string location = locationText(answers);
        std::string region = regionOfLocation(location);
        const std::string meaning = region == location ? "" : ", which is " + region;
        section.places.push_back({name, "\"" + shown(location) + "\"" + meaning, ""});
        return region;
    }
    section.places.push_back({name, failureOf(answers), ""});
    std::string region = regionInHeader(answers);
    if (!region.empty()) section.places.push_back({"a header of this answer", shown(region), ""});
    return region;
}

void remarkOnRegion(Section& section, const Answers& answers, const std::string& actual) {
    const std::string used = signingRegion(answers);
    const bool isFollowed = answers.region == anyRegion;
    if (used != actual && !isFollowed) {
        section.remarks.push_back("the bucket is in another region: choose it with AWS_DEFAULT_REGION=" +
                                  shown(actual));
        return;
    }
    if (used != actual)
        section.remarks.emplace_back(
            "aws-global costs a request more: S3 refuses the first, and names the region");
    if (answers.location.IsSuccess() && answers.region != locationText(answers))
        section.remarks.emplace_back(
            "the region is right: a failure that is called bad_region has another reason");
}

}  // namespace

Section explainBucket(const Answers& answers) {
    Section section{"Bucket", {}, {}};
    const std::string region = addAnswer(section, answers);
    if (answers.endpoint.IsSuccess()) {
        section.places.push_back({"requests are signed for", shown(signingRegion(answers)), ""});
        section.places.push_back({"requests go to", addressShown(bucketUrl(answers)), ""});
    }
    if (region.empty()) {
        section.remarks.emplace_back(
            "where the bucket is stays unknown, which alone says nothing against the region");
    } else if (answers.endpoint.IsSuccess()) {
        remarkOnRegion(section, answers, region);
    }
    return section;
}

}  // namespace s3vfs::explain
