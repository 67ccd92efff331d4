#pragma once

#include "replay/RecordedCase.hpp"
#include "support/Script.hpp"

namespace replay {

/// The requests of a case in the form that its field `wire` has, full or short, with volatile values
/// replaced. `now` is the time of the replay, in seconds since the epoch.
Json describeWire(const std::vector<testsupport::SeenRequest>& requests, const Json& recorded, long now);

}  // namespace replay
