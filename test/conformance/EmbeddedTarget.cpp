#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/client/DefaultRetryStrategy.h>
#include <aws/s3/S3ClientConfiguration.h>
#include <aws/s3/S3EndpointProvider.h>

#include <ostream>

#include "conformance/Target.hpp"
#include "support/TestCertificate.hpp"

namespace testsupport {

struct EmbeddedTarget::Tls {
    TestAuthority authority;
    CertificateFiles files = authority.issue({"127.0.0.1", "localhost"});
};

std::string nameOf(Way way) {
    switch (way) {
        case Way::HttpPath:
            return "HttpPath";
        case Way::HttpVirtualHost:
            return "HttpVirtualHost";
        case Way::HttpsPath:
            return "HttpsPath";
    }
    return "unknown";
}

void PrintTo(Way way, std::ostream* out) {
    *out << nameOf(way);
}

EmbeddedTarget::EmbeddedTarget(Way way) : way_(way) {
    s3server::Options options;
    options.credentials.push_back({"temporary-key", "temporary-secret", "the-token"});
    if (way == Way::HttpsPath) {
        tls_ = std::make_unique<Tls>();
        options.tls = s3server::TlsFiles{tls_->files.certificate, tls_->files.key};
    }
    server_ = std::make_unique<s3server::Server>(options);
    server_->createBucket(bucketName, region);
}

EmbeddedTarget::~EmbeddedTarget() = default;

// A name's buckets are hosts of their own; an address can only have them in the path.
std::string EmbeddedTarget::endpoint() const {
    const auto port = std::to_string(server_->port());
    switch (way_) {
        case Way::HttpPath:
            return "http://127.0.0.1:" + port;
        case Way::HttpVirtualHost:
            return "http://localhost:" + port;
        case Way::HttpsPath:
            return "https://127.0.0.1:" + port;
    }
    return {};
}

Aws::Client::ClientConfiguration EmbeddedTarget::configuration() const {
    Aws::Client::ClientConfiguration configuration;
    configuration.region = region;
    configuration.endpointOverride = endpoint();
    configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(0);
    if (tls_) configuration.caFile = tls_->authority.caFile().string();
    return configuration;
}

std::shared_ptr<Aws::S3::S3Client> EmbeddedTarget::sdkClient(
    const Aws::Client::ClientConfiguration& configuration, const Keys& keys) const {
    const Aws::S3::S3ClientConfiguration s3Configuration(
        configuration, Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy::Never, true,
        Aws::S3::US_EAST_1_REGIONAL_ENDPOINT_OPTION::NOT_SET);
    return std::make_shared<Aws::S3::S3Client>(
        std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>(keys.access, keys.secret, keys.token),
        std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>(), s3Configuration);
}

std::unique_ptr<storage::s3provider::S3CloudClient> EmbeddedTarget::client(const Keys& keys) {
    return std::make_unique<storage::s3provider::S3CloudClient>(
        bucketName, sdkClient(configuration(), keys), storage::s3provider::S3ClientConfiguration{2, 0},
        region);
}

std::unique_ptr<storage::s3provider::S3CloudClient> EmbeddedTarget::clientOf(const std::string& bucket) {
    return std::make_unique<storage::s3provider::S3CloudClient>(
        bucket, sdkClient(configuration()), storage::s3provider::S3ClientConfiguration{2, 0}, region);
}

std::unique_ptr<storage::s3provider::S3CloudClient> EmbeddedTarget::clientWith(
    const Aws::Client::ClientConfiguration& configuration) const {
    return std::make_unique<storage::s3provider::S3CloudClient>(
        bucketName, sdkClient(configuration), storage::s3provider::S3ClientConfiguration{2, 0}, region);
}

}  // namespace testsupport
