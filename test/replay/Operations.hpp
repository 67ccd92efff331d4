#pragma once

#include "replay/RecordedCase.hpp"

#include <aws/s3/S3Client.h>
#include <aws/s3/S3EndpointProvider.h>

namespace replay {

/// Makes the case's call once; gives the outcome in the form of an entry of `outcomes`. Throws
/// std::runtime_error for an operation, or a field to set, that it doesn't know.
Json callOperation(const Aws::S3::S3Client& client, const Json& recorded);

/// Only asks the provider, set up by a client, where the case's call would go.
Json resolveEndpoint(const Aws::S3::Endpoint::S3EndpointProvider& provider, const Json& recorded);

}  // namespace replay
