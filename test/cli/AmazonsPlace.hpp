#pragma once

#include <optional>
#include <s3server/Server.hpp>
#include <string>
#include <vector>

#include "support/process/Process.hpp"
#include "support/servers/Relay.hpp"
#include "support/servers/TestCertificate.hpp"

namespace testsupport {

/// What leads Amazon's names to a server in this process: its certificate, and a proxy.
class AmazonsPlace {
public:
    s3server::Options serverOptions() {
        const auto files = authority_.issue({"*.s3.us-east-2.amazonaws.com", "*.s3.eu-west-3.amazonaws.com",
                                             "*.s3-fips.eu-west-3.amazonaws.com"});
        s3server::Options options;
        options.hostNames.push_back("s3-fips.eu-west-3.amazonaws.com");
        options.tls = s3server::TlsFiles{files.certificate, files.key};
        return options;
    }

    /// To be called before what follows.
    void lead(const s3server::Server& server) { proxy_.emplace(server.port(), Relay::Opening::Connect); }

    /// Takes away endpoint and region, and names proxy and certificate.
    void changeVariables(Variables& variables) const {
        for (const char* const name : {"ZR_AWS_ENDPOINT_OVERRIDE", "ZR_AWS_PROXY", "AWS_REGION"})
            variables.erase(name);
        variables["ZR_PROXY_HOST"] = "127.0.0.1";
        variables["ZR_PROXY_PORT"] = std::to_string(proxy_->port());
        variables["ZR_ROOT_CERT_FILE"] = authority_.caFile().string();
    }

    /// What the proxy was asked for, "HOST:PORT" each.
    std::vector<std::string> tunnels() const { return proxy_->tunnels(); }

private:
    TestAuthority authority_;
    std::optional<Relay> proxy_;
};

}  // namespace testsupport
