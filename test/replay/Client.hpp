#pragma once

#include "replay/Scene.hpp"

#include <aws/s3/S3Client.h>
#include <aws/s3/S3EndpointProvider.h>

#include <atomic>
#include <memory>

namespace replay {

/// The client of one case, and the number of attempts its calls made.
struct Client {
    std::shared_ptr<std::atomic<int>>
        attempts;  ///< 0 for ever if the configuration's own retry strategy is used
    std::shared_ptr<Aws::S3::Endpoint::S3EndpointProvider> endpoints;  ///< the client's
    std::unique_ptr<Aws::S3::S3Client> s3;
};

/// A client with the case's settings. Throws std::runtime_error for a setting it doesn't know.
Client makeClient(const Json& settings, const Scene& scene);

}  // namespace replay
