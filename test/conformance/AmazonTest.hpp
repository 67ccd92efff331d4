#pragma once

#include <foundation/storage/provider/StorageIRI.hpp>
#include <s3server/Server.hpp>
#include <string>

#include "support/plugin/FactoryTest.hpp"
#include "support/plugin/ProviderFiles.hpp"
#include "support/servers/Relay.hpp"
#include "support/servers/TestCertificate.hpp"

namespace testsupport {

using foundation::storage::provider::StorageIRI;

/// A server in this process in Amazon's place: a proxy leads all of Amazon's names to it, and its certificate
/// bears them. Keys and proxy are in the environment, and the bucket "travelled" is in eu-west-3. It also
/// takes the keys that a MetadataService gives by default.
class AmazonTest : public FactoryTest {
protected:
    AmazonTest() {
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
        options.credentials.push_back({"machine", "secret-of-machine", "token-of-machine"});
        options.tls = s3server::TlsFiles{files.certificate, files.key};
        return options;
    }

    static std::string signatureOf(const s3server::RequestRecord& request) {
        return request.header("authorization").value_or("");
    }

    TestAuthority authority;
    s3server::Server amazon{withCertificate()};
    Relay proxy{amazon.port(), Relay::Opening::Connect};
};

}  // namespace testsupport
