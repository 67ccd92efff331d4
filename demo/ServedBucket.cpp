#include "ServedBucket.hpp"

#include <cstdlib>
#include <iostream>

namespace demo {

ServedBucket::ServedBucket() {
    server.createBucket(bucketName, region);
    const auto& keys = s3server::defaultCredentials;
    const std::pair<const char*, std::string> variables[] = {
        {"ZR_AWS_ENDPOINT_OVERRIDE", "http://" + server.endpoint()},
        {"ZR_AWS_PROXY", "OFF"},
        {"AWS_DEFAULT_REGION", region},
        {"AWS_EC2_METADATA_DISABLED", "true"},
        {"AWS_ACCESS_KEY_ID", keys.accessKey},
        {"AWS_SECRET_ACCESS_KEY", keys.secretKey},
        {"AWS_SESSION_TOKEN", ""},
    };
    for (const auto& [name, value] : variables)
        ::setenv(name, value.c_str(), 1);  // NOLINT(concurrency-mt-unsafe): before the threads that read it
    std::cout << "An S3 server listens on " << server.endpoint() << " with bucket '" << bucketName << "' in "
              << region << ".\n";
}

}  // namespace demo
