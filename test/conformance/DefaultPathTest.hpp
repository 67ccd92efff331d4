#pragma once

#include <s3server/Server.hpp>
#include <string>

#include "S3ProviderFactoryV2.hpp"
#include "support/Relay.hpp"
#include "support/TestCertificate.hpp"
#include "unit/FactoryTest.hpp"

namespace testsupport {

using foundation::storage::provider::IProvider;
using foundation::storage::provider::StorageIRI;
using storage::s3provider::S3ProviderFactoryV2;

/// Everything as it is without a setting: HTTPS, Amazon's host names with the bucket in front, the region
/// that S3 tells. Only that a proxy leads all of Amazon's names to a server in this process, whose
/// certificate bears them.
class DefaultPathTest : public FactoryTest {
protected:
    DefaultPathTest() {
        environment.unset("ZR_AWS_PROXY");
        environment.set("ZR_PROXY_HOST", "127.0.0.1");
        environment.set("ZR_PROXY_PORT", std::to_string(proxy.port()));
        environment.set("ZR_ROOT_CERT_FILE", authority.caFile().string());
        environment.set("AWS_ACCESS_KEY_ID", s3server::defaultCredentials.accessKey);
        environment.set("AWS_SECRET_ACCESS_KEY", s3server::defaultCredentials.secretKey);
        amazon.createBucket("travelled", "eu-west-3");
    }

    s3server::Options withCertificate() {
        const auto files = authority.issue({"*.s3.us-east-2.amazonaws.com", "*.s3.eu-west-3.amazonaws.com"});
        s3server::Options options;
        options.tls = s3server::TlsFiles{files.certificate, files.key};
        return options;
    }

    static void put(IProvider& provider, const std::u16string& path, const std::string& content) {
        const auto writer = provider.openWrite(path);
        writer->write(content.data(), content.size());
        writer->commit();
    }

    static std::string get(IProvider& provider, const std::u16string& path) {
        const auto reader = provider.openRead(path);
        std::string content(reader->size(), '\0');
        content.resize(reader->read(0, content.data(), content.size()));
        return content;
    }

    static std::string signatureOf(const s3server::RequestRecord& request) {
        return request.header("authorization").value_or("");
    }

    TestAuthority authority;
    s3server::Server amazon{withCertificate()};
    Relay proxy{amazon.port(), Relay::Opening::Connect};
    S3ProviderFactoryV2 factory{nullptr};
};

}  // namespace testsupport
