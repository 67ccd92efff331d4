#pragma once

#include <aws/core/client/ClientConfiguration.h>

#include <functional>
#include <iosfwd>
#include <memory>
#include <storage/cloudprovider/CloudClient.hpp>
#include <string>

#include "conformance/targets/Quirk.hpp"

namespace testsupport {

/// How a client speaks to a server, and where it puts the bucket's name.
enum class Way { HttpPath, HttpVirtualHost, HttpsPath, HttpsVirtualHost };

constexpr Way everyWay[] = {Way::HttpPath, Way::HttpVirtualHost, Way::HttpsPath, Way::HttpsVirtualHost};

std::string nameOf(Way way);
void PrintTo(Way way, std::ostream* out);
bool overTls(Way way);
bool byVirtualHost(Way way);

/// A host name whose buckets are hosts below it. All of them are 127.0.0.1 to libcurl.
constexpr const char* localHostName = "s3.localhost";

/// A name's buckets are hosts of their own; an address can only have them in the path.
std::string localEndpoint(Way way, unsigned port);

/// Keys that a client signs with; all empty: it doesn't sign.
struct Keys {
    std::string access;
    std::string secret;
    std::string token;
};

/// Where and as whom to reach a bucket.
struct Access {
    std::string endpoint;  ///< with scheme
    std::string region;
    std::string bucket;
    Keys keys;
    std::string caFile;  ///< empty: the system's authorities
};

/// Leads an SDK client to that server, without retries.
Aws::Client::ClientConfiguration configurationFor(const Access& access);

/// A cloud client that tries downloads twice, without a pause.
std::unique_ptr<storage::cloudprovider::CloudClient> cloudClient(const Access& access);
/// The same for a configuration made from configurationFor().
std::unique_ptr<storage::cloudprovider::CloudClient> cloudClient(
    const Access& access, const Aws::Client::ClientConfiguration& configuration);

/// A server that the suite is held against, as one test sees it: with a bucket, or a part of one, of its own.
class Target {
public:
    virtual ~Target() = default;

    virtual Access access() const = 0;
    virtual Quirks quirks() const { return {}; }

    /// To that bucket, or that part of it.
    virtual std::unique_ptr<storage::cloudprovider::CloudClient> client() { return cloudClient(access()); }
    /// To another bucket of the server.
    std::unique_ptr<storage::cloudprovider::CloudClient> clientOf(const std::string& bucket) const;
};

/// A server to hold the suite against, and the name that its tests have.
struct TargetChoice {
    std::string name;
    std::function<std::unique_ptr<Target>()> open;
};

void PrintTo(const TargetChoice& choice, std::ostream* out);

}  // namespace testsupport
