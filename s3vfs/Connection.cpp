#include "Connection.hpp"

#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/client/DefaultRetryStrategy.h>
#include <aws/s3/S3Client.h>
#include <aws/s3/S3ClientConfiguration.h>
#include <aws/s3/S3EndpointProvider.h>

#include <fl/i18n.hpp>

#include "S3CloudClient.hpp"

namespace s3vfs {

namespace {

std::string environment(const char* variable) {
    return fl::i18n::ustring_to_utf8(fl::i18n::getenv(variable));
}

std::string firstNotEmpty(std::initializer_list<std::string> texts) {
    for (const auto& text : texts) {
        if (!text.empty()) return text;
    }
    return {};
}

// Somebody waits at the terminal: a dead endpoint is told after seconds, not after the SDK's half minute.
constexpr long retries = 3;
constexpr long connectTimeoutMs = 10'000;
constexpr long silenceTimeoutMs = 300'000;

Aws::S3::S3ClientConfiguration configurationFor(const Endpoint& endpoint) {
    Aws::Client::ClientConfiguration base;
    base.region = endpoint.region;
    base.endpointOverride = endpoint.address;
    base.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(retries);
    base.connectTimeoutMs = connectTimeoutMs;
    base.requestTimeoutMs = silenceTimeoutMs;
    return {base, Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy::Never, true,
            Aws::S3::US_EAST_1_REGIONAL_ENDPOINT_OPTION::NOT_SET};
}

}  // namespace

Endpoint completeFromEnvironment(const Endpoint& given) {
    return {firstNotEmpty({given.address, environment("ZR_AWS_ENDPOINT_OVERRIDE")}),
            firstNotEmpty(
                {given.region, environment("AWS_DEFAULT_REGION"), environment("AWS_REGION"), "us-east-1"})};
}

std::unique_ptr<storage::cloudprovider::CloudClient> openBucket(const std::string& bucket,
                                                                const Endpoint& endpoint) {
    auto credentials = std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>(
        environment("AWS_ACCESS_KEY_ID"), environment("AWS_SECRET_ACCESS_KEY"),
        environment("AWS_SESSION_TOKEN"));
    auto client = std::make_shared<Aws::S3::S3Client>(
        std::move(credentials), std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>(),
        configurationFor(endpoint));
    // One attempt: the SDK repeats by itself what is worth repeating.
    const storage::s3provider::S3ClientConfiguration oneAttempt{1, 0};
    return std::make_unique<storage::s3provider::S3CloudClient>(bucket, std::move(client), oneAttempt,
                                                                endpoint.region);
}

}  // namespace s3vfs
