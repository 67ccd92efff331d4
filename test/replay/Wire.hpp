#pragma once

#include "replay/RecordedCase.hpp"
#include "support/Script.hpp"

#include <string>

namespace replay {

/// With the recording's values or placeholders for what changes from run to run or machine to machine.
std::string withPlaceholders(std::string text);

/// The requests of a case in the form that its field `wire` has, full or short, with volatile values
/// replaced. `now` is the time of the replay, in seconds since the epoch.
Json describeWire(const std::vector<testsupport::SeenRequest>& requests, const Json& recorded, long now);

}  // namespace replay
