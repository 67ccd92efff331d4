#include "conformance/targets/Target.hpp"

#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/client/DefaultRetryStrategy.h>
#include <aws/s3/S3Client.h>
#include <aws/s3/S3ClientConfiguration.h>
#include <aws/s3/S3EndpointProvider.h>

#include <ostream>
#include <utility>

#include "S3CloudClient.hpp"

namespace testsupport {

using storage::cloudprovider::CloudClient;

std::string nameOf(Way way) {
    return std::string(overTls(way) ? "Https" : "Http") + (byVirtualHost(way) ? "VirtualHost" : "Path");
}

void PrintTo(Way way, std::ostream* out) {
    *out << nameOf(way);
}

bool overTls(Way way) {
    return way == Way::HttpsPath || way == Way::HttpsVirtualHost;
}

bool byVirtualHost(Way way) {
    return way == Way::HttpVirtualHost || way == Way::HttpsVirtualHost;
}

std::string localEndpoint(Way way, unsigned port) {
    return std::string(overTls(way) ? "https://" : "http://") +
           (byVirtualHost(way) ? localHostName : "127.0.0.1") + ":" + std::to_string(port);
}

Aws::Client::ClientConfiguration configurationFor(const Access& access) {
    Aws::Client::ClientConfiguration configuration;
    configuration.region = access.region;
    configuration.endpointOverride = access.endpoint;
    configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(0);
    if (!access.caFile.empty()) configuration.caFile = access.caFile;
    return configuration;
}

std::unique_ptr<CloudClient> cloudClient(const Access& access) {
    return cloudClient(access, configurationFor(access));
}

std::unique_ptr<CloudClient> cloudClient(const Access& access,
                                         const Aws::Client::ClientConfiguration& configuration) {
    const Aws::S3::S3ClientConfiguration s3Configuration(
        configuration, Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy::Never, true,
        Aws::S3::US_EAST_1_REGIONAL_ENDPOINT_OPTION::NOT_SET);
    const auto& [key, secret, token] = access.keys;
    auto client = std::make_shared<Aws::S3::S3Client>(
        std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>(key, secret, token),
        std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>(), s3Configuration);
    return std::make_unique<storage::s3provider::S3CloudClient>(
        access.bucket, std::move(client), storage::s3provider::S3ClientConfiguration{2, 0}, access.region);
}

std::unique_ptr<CloudClient> Target::clientOf(const std::string& bucket) const {
    auto elsewhere = access();
    elsewhere.bucket = bucket;
    return cloudClient(elsewhere);
}

void PrintTo(const TargetChoice& choice, std::ostream* out) {
    *out << choice.name;
}

}  // namespace testsupport
