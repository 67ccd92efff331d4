#pragma once

#include "http/Request.hpp"

namespace s3server {

/// The headers of a request that come back with the object it stores, content-type among them in any case.
Headers keptHeaders(const Request& request);

/// Throws S3Error NotImplemented if the request asks for something that this server would have to do to the
/// object it stores, and doesn't: customer keys, tags, locks, redirections.
void refuseUnsupportedHeaders(const Request& request);

}  // namespace s3server
