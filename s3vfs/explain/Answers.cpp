#include "explain/Answers.hpp"

#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/client/DefaultRetryStrategy.h>
#include <aws/s3/S3Client.h>
#include <aws/s3/S3EndpointProvider.h>

#include <memory>
#include <utility>

#include "AwsS3ClientFactory.hpp"
#include "ConfigurationSources.hpp"

namespace s3vfs::explain {

using Aws::S3::Endpoint::S3EndpointProvider;

namespace {

// Somebody waits at the terminal: a dead endpoint is told after seconds.
constexpr long retries = 2;
constexpr long connectTimeoutMs = 10'000;

/// A client as the plug-in makes it, but with credentials that were found already, and what leads it to its
/// endpoints.
struct Client {
    std::shared_ptr<S3EndpointProvider> endpoints;
    std::shared_ptr<Aws::S3::S3Client> s3;
};

Client makeClient(Aws::Client::ClientConfiguration configuration, const std::string& region,
                  const Aws::Auth::AWSCredentials& credentials) {
    configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(retries);
    configuration.connectTimeoutMs = connectTimeoutMs;
    configuration.endpointOverride = storage::s3provider::endpointOverride();
    if (!region.empty()) configuration.region = region;
    auto endpoints = std::make_shared<S3EndpointProvider>();
    auto s3 = storage::s3provider::makeS3Client(
        std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>(credentials), endpoints, configuration);
    return {std::move(endpoints), std::move(s3)};
}

}  // namespace

bool pluginAsks() {
    return storage::s3provider::endpointOverride().empty() &&
           storage::s3provider::regionFromEnvironment().empty();
}

Answers ask(const std::string& bucket, const Aws::Auth::AWSCredentials& credentials) {
    Answers answers;
    answers.configuration = storage::s3provider::makeClientConfiguration();
    answers.credentials = credentials;
    const std::string chosen = storage::s3provider::regionFromEnvironment();
    const std::string lookup = pluginAsks() ? storage::s3provider::bucketLookupRegion() : chosen;
    answers.lookupRegion = lookup.empty() ? answers.configuration.region : lookup;
    answers.location = storage::s3provider::askBucketLocation(
        *makeClient(answers.configuration, lookup, credentials).s3, bucket);
    answers.region = pluginAsks() ? storage::s3provider::regionFrom(answers.location) : chosen;
    const auto client = makeClient(answers.configuration, answers.region, credentials);
    answers.endpoint = client.endpoints->ResolveEndpoint({{"Bucket", bucket}});
    return answers;
}

std::string signingRegion(const Answers& answers) {
    if (!answers.endpoint.IsSuccess()) return {};
    const auto& attributes = answers.endpoint.GetResult().GetAttributes();
    if (!attributes || !attributes->authScheme.GetSigningRegion()) return {};
    return *attributes->authScheme.GetSigningRegion();
}

std::string bucketUrl(const Answers& answers) {
    return answers.endpoint.IsSuccess() ? answers.endpoint.GetResult().GetURL() : std::string();
}

}  // namespace s3vfs::explain
