#include "conformance/targets/EmbeddedTarget.hpp"

#include "support/servers/TestCertificate.hpp"

namespace testsupport {

namespace {

constexpr const char* region = "eu-west-3";

}  // namespace

struct EmbeddedTarget::Tls {
    TestAuthority authority;
    CertificateFiles files = authority.issue({"127.0.0.1", std::string("*.") + localHostName});
};

EmbeddedTarget::EmbeddedTarget(Way way) : way_(way) {
    s3server::Options options;
    const auto [access, secret, token] = temporaryKeys();
    options.credentials.push_back({access, secret, token});
    options.hostNames = {localHostName};
    if (overTls(way)) {
        tls_ = std::make_unique<Tls>();
        options.tls = s3server::TlsFiles{tls_->files.certificate, tls_->files.key};
    }
    server_ = std::make_unique<s3server::Server>(options);
    server_->createBucket(bucketName, region);
}

EmbeddedTarget::~EmbeddedTarget() = default;

Access EmbeddedTarget::access() const {
    const auto& [access, secret, token] = s3server::defaultCredentials;
    return {localEndpoint(way_, server_->port()),
            region,
            bucketName,
            {access, secret, token},
            tls_ ? tls_->authority.caFile().string() : ""};
}

}  // namespace testsupport
