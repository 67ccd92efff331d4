#pragma once

#include <memory>
#include <mutex>
#include <string>

#include "core/Connection.hpp"
#include "core/CurlGlobal.hpp"

namespace standin::aws {

/// Where the instance metadata service is, by AWS_EC2_METADATA_SERVICE_ENDPOINT, else by
/// AWS_EC2_METADATA_SERVICE_ENDPOINT_MODE, "IPv4" or "IPv6". Reads the environment.
std::string metadataEndpoint();

/// "eu-west-1" of the availability zone "eu-west-1b": what ends with the first number. A text without a
/// number stays whole.
std::string regionOfZone(const std::string& zone);

/// Asks Amazon EC2's instance metadata service, by session tokens (version 2) until the service turns out
/// not to give any, then without (version 1). A request that fails for a passing reason is made twice; each
/// is given up after a second of silence, or two seconds in all. Thread-safe; one request at a time.
class MetadataClient {
public:
    /// A host, host:port or URL. One that is none of them is never asked.
    explicit MetadataClient(std::string endpoint);

    /// The document of the machine's role, JSON; empty when there is none or no service.
    std::string credentials();

    /// The machine's region; empty when not known. Once known it isn't asked for again.
    std::string region();

private:
    std::string askForCredentials();
    std::string credentialsOfRole(const Headers& headers);
    std::string get(const std::string& path, const Headers& headers);
    WireAnswer ask(Aws::Http::HttpMethod method, const std::string& path, Headers headers);
    Connection& connection();

    const CurlGlobal curl_;
    const std::string endpoint_;
    std::mutex mutex_;
    std::unique_ptr<Connection> connection_;  // made when first asked
    std::string token_;
    bool usesTokens_ = true;
    std::string region_;
};

}  // namespace standin::aws
