#pragma once

#include <s3server/Server.hpp>

#include "support/process/Environment.hpp"
#include "support/process/Process.hpp"

namespace testsupport {

/// The variables with which a program reaches this server, with the keys that it accepts, and asks nobody
/// else.
inline Variables leadingTo(const s3server::Server& server) {
    return {{"AWS_ACCESS_KEY_ID", s3server::defaultCredentials.accessKey},
            {"AWS_SECRET_ACCESS_KEY", s3server::defaultCredentials.secretKey},
            {"AWS_REGION", "us-east-1"},
            {"AWS_EC2_METADATA_DISABLED", "true"},
            {"AWS_EC2_METADATA_SERVICE_ENDPOINT", noMetadataService},
            {"ZR_AWS_ENDPOINT_OVERRIDE", "http://" + server.endpoint()},
            {"ZR_AWS_PROXY", "OFF"}};
}

}  // namespace testsupport
