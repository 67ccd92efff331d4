#pragma once

#include <functional>
#include <string>

#include "http/Request.hpp"
#include "operations/S3Error.hpp"
#include "store/Store.hpp"

namespace s3server {

/// What the store is to check before it replaces an object, by the conditional headers of the request that
/// writes ("Conditional writes" in the S3 user guide); empty if there are none. The function keeps no
/// reference to the request.
std::function<void(const Object*)> writeCondition(const Request& request);

S3Error preconditionFailed(const std::string& condition);

}  // namespace s3server
