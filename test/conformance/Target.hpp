#pragma once

#include <aws/core/client/ClientConfiguration.h>
#include <aws/s3/S3Client.h>

#include <iosfwd>
#include <memory>
#include <s3server/Server.hpp>
#include <string>

#include "S3CloudClient.hpp"

namespace testsupport {

/// How a client speaks to the embedded server.
enum class Way { HttpPath, HttpVirtualHost, HttpsPath };

void PrintTo(Way way, std::ostream* out);
std::string nameOf(Way way);

/// Keys that a client signs with.
struct Keys {
    std::string access = s3server::defaultCredentials.accessKey;
    std::string secret = s3server::defaultCredentials.secretKey;
    std::string token = "";
};

/// An embedded server with bucket "conformance" in eu-west-3, and clients for it. The server checks every
/// signature.
class EmbeddedTarget {
public:
    static constexpr const char* bucketName = "conformance";
    static constexpr const char* region = "eu-west-3";

    explicit EmbeddedTarget(Way way);
    ~EmbeddedTarget();

    s3server::Server& server() { return *server_; }

    std::unique_ptr<storage::s3provider::S3CloudClient> client(const Keys& keys = {});
    std::unique_ptr<storage::s3provider::S3CloudClient> clientOf(const std::string& bucket);

    /// Leads an SDK client to this server, without retries.
    Aws::Client::ClientConfiguration configuration() const;

    std::shared_ptr<Aws::S3::S3Client> sdkClient(const Aws::Client::ClientConfiguration& configuration,
                                                 const Keys& keys = {}) const;

    /// A client for a configuration made from configuration().
    std::unique_ptr<storage::s3provider::S3CloudClient> clientWith(
        const Aws::Client::ClientConfiguration& configuration) const;

private:
    struct Tls;

    std::string endpoint() const;

    Way way_;
    std::unique_ptr<Tls> tls_;
    std::unique_ptr<s3server::Server> server_;
};

}  // namespace testsupport
