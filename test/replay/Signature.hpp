#pragma once

#include "replay/RecordedCase.hpp"
#include "support/servers/Script.hpp"

#include <string>

namespace replay {

/// The parts of a request's `authorization` header, and whether its signature is the one computed here, once
/// over the path as sent and once over that path decoded and encoded again: the field `signature` of a case.
/// Null for an unsigned request. AWS Signature Version 4, docs: Authenticating Requests (AWS Signature
/// Version 4).
Json describeSignature(const testsupport::SeenRequest& request, const std::string& secretKey);

}  // namespace replay
