#pragma once

#include <map>
#include <string>

namespace bench {

/// A server, and a bucket on it to write into. Passed on to other processes by environment variables only, so
/// that the keys show in no process list.
struct Target {
    std::string endpoint;  ///< with scheme; addressed path-style
    std::string region;
    std::string bucket;
    std::string accessKey;
    std::string secretKey;
    std::string caFile;  ///< empty: the system's

    bool isGiven() const { return !endpoint.empty(); }
};

/// From S3PROVIDER_TEST_ENDPOINT, _REGION, _BUCKET, _ACCESS_KEY, _SECRET_KEY and _CA_FILE.
Target targetFromEnvironment();

/// The same variables, set to these values.
std::map<std::string, std::string> asEnvironment(const Target& target);

}  // namespace bench
