#pragma once

#include <string>

namespace standin::aws {

/// What a client says of itself, in the SDK's words: a service may tell clients apart by them.
std::string userAgent(const std::string& retryStrategyName, const std::string& serviceId);

}  // namespace standin::aws
