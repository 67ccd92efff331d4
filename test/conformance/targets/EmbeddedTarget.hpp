#pragma once

#include <memory>
#include <s3server/Server.hpp>

#include "conformance/targets/Target.hpp"

namespace testsupport {

/// A fresh embedded server with bucket "conformance" in eu-west-3. It checks every signature.
class EmbeddedTarget : public Target {
public:
    static constexpr const char* bucketName = "conformance";
    static Keys temporaryKeys() { return {"temporary-key", "temporary-secret", "the-token"}; }

    explicit EmbeddedTarget(Way way);
    ~EmbeddedTarget() override;

    Access access() const override;
    s3server::Server& server() { return *server_; }

    Aws::Client::ClientConfiguration configuration() const { return configurationFor(access()); }
    /// A client for a configuration made from configuration().
    std::unique_ptr<storage::cloudprovider::CloudClient> clientWith(
        const Aws::Client::ClientConfiguration& configuration) const {
        return cloudClient(access(), configuration);
    }

private:
    struct Tls;

    Way way_;
    std::unique_ptr<Tls> tls_;
    std::unique_ptr<s3server::Server> server_;
};

}  // namespace testsupport
