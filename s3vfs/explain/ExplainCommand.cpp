#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/client/DefaultRetryStrategy.h>
#include <aws/s3/S3EndpointProvider.h>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <iostream>
#include <memory>

#include "AwsS3ClientFactory.hpp"
#include "Commands.hpp"
#include "ConfigurationSources.hpp"
#include "explain/Sections.hpp"

namespace s3vfs {

using namespace explain;

namespace {

// Somebody waits at the terminal: a dead endpoint is told after seconds.
constexpr long retries = 2;
constexpr long connectTimeoutMs = 10'000;

/// The question that the plug-in asks, of the endpoint that it asks, with credentials that were found
/// already.
Aws::S3::Model::GetBucketLocationOutcome askLocation(const std::string& bucket,
                                                     Aws::Client::ClientConfiguration configuration,
                                                     const Aws::Auth::AWSCredentials& credentials) {
    configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(retries);
    configuration.connectTimeoutMs = connectTimeoutMs;
    configuration.endpointOverride = storage::s3provider::endpointOverride();
    const std::string region = configuration.endpointOverride.empty()
                                   ? storage::s3provider::bucketLookupRegion()
                                   : storage::s3provider::regionFromEnvironment();
    if (!region.empty()) configuration.region = region;
    const auto client = storage::s3provider::makeS3Client(
        std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>(credentials),
        std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>(), configuration);
    return storage::s3provider::askBucketLocation(*client, bucket);
}

/// Whether the bucket could be asked.
bool explainBucketNamed(const std::string& bucket) {
    const auto configuration = storage::s3provider::makeClientConfiguration();
    const auto found = explainCredentials();
    const Answers answers{configuration, found.credentials,
                          askLocation(bucket, configuration, found.credentials)};
    for (const Section& section : {explainRegion(answers), found.section, explainProxy(configuration),
                                   explainCertificates(configuration), explainRetries(configuration),
                                   explainEndpoint(), explainBucket(answers)})
        print(std::cout, section);
    return found.usable && answers.location.IsSuccess();
}

}  // namespace

void addExplainCommand(CLI::App& app, Command& chosen) {
    auto* command = app.add_subcommand(
        "explain", "Tell where region, keys, proxy and certificates come from, and what the bucket says");
    auto text = std::make_shared<std::string>();
    command->add_option("address", *text, "s3://BUCKET")->required();
    command->callback([&chosen, text] {
        const auto address = parseS3Address(*text);
        chosen = {"explain", address, [address](auto&) { return explainBucketNamed(address.bucket); }};
    });
}

}  // namespace s3vfs
