#pragma once

#include <s3server/Server.hpp>

namespace demo {

constexpr const char* bucketName = "demo";
constexpr const char* region = "eu-west-3";

/// An S3 server in this process, with an empty bucket, and this process's environment as a user would set it
/// to reach that server. To be made before the first thread that reads the environment.
class ServedBucket {
public:
    ServedBucket();

    s3server::Server server;
};

}  // namespace demo
