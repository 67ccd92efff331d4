#pragma once

#include <string>

namespace standin::aws {

/// Marks the attempts of one call as belonging together: a random UUID (RFC 4122, version 4) in upper case.
std::string makeInvocationId();

}  // namespace standin::aws
