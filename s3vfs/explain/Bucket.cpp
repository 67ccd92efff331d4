#include <aws/s3/model/BucketLocationConstraint.h>

#include <boost/algorithm/string/replace.hpp>

#include "AwsS3ClientFactory.hpp"
#include "ConfigurationSources.hpp"
#include "explain/Sections.hpp"
#include "explain/Wording.hpp"

namespace s3vfs::explain {

namespace {

/// An endpoint may hold a password, and the SDK quotes one that it can't use.
std::string withEndpointShown(std::string text) {
    const std::string endpoint = storage::s3provider::endpointOverride();
    if (!endpoint.empty()) boost::algorithm::replace_all(text, endpoint, addressShown(endpoint));
    return text;
}

std::string failureOf(const Answers& answers) {
    const auto& error = answers.location.GetError();
    const auto status = static_cast<int>(error.GetResponseCode());
    const std::string origin = status < 0
                                   ? "no usable answer"
                                   : "answered " + std::to_string(status) + " " + error.GetExceptionName();
    return shownWithout({answers.credentials.GetAWSSecretKey(), answers.credentials.GetSessionToken(),
                         answers.configuration.proxyPassword},
                        origin + ": " + withEndpointShown(error.GetMessage()));
}

std::string locationText(const Answers& answers) {
    using namespace Aws::S3::Model::BucketLocationConstraintMapper;
    return GetNameForBucketLocationConstraint(answers.location.GetResult().GetLocationConstraint());
}

}  // namespace

std::string regionOfLocation(const std::string& location) {
    if (location.empty()) return "us-east-1";
    return location == "EU" ? "eu-west-1" : location;
}

Section explainBucket(const Answers& answers) {
    Section section{"Bucket", {}, {}};
    if (!answers.location.IsSuccess()) {
        section.places.push_back({"S3, asked for its location", failureOf(answers), ""});
        section.remarks.emplace_back(
            "where the bucket is stays unknown, which alone says nothing against the region");
        return section;
    }
    const std::string location = locationText(answers);
    const std::string region = regionOfLocation(location);
    const std::string meaning = region == location ? "" : ", which is " + region;
    section.places.push_back({"S3, asked for its location", "\"" + shown(location) + "\"" + meaning, ""});
    const std::string used = signingRegion(answers);
    section.places.push_back({"requests are signed for", shown(used), ""});
    if (used != region) {
        section.remarks.push_back("the bucket is in another region: choose it with AWS_DEFAULT_REGION=" +
                                  shown(region));
    } else if (used != location) {
        section.remarks.emplace_back(
            "the region is right: a failure that is called bad_region has another reason");
    }
    return section;
}

}  // namespace s3vfs::explain
