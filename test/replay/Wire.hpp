#pragma once

#include "replay/RecordedCase.hpp"
#include "support/servers/Script.hpp"

#include <string>

namespace replay {

/// With the recording's values or placeholders for what changes from run to run or machine to machine.
std::string withPlaceholders(std::string text);

/// The header lines in the order sent, each as name and value, with placeholders. The value is all that
/// follows the first colon with a blank; a line without that stands whole as the name.
Json describeHeaders(const testsupport::SeenRequest& request);

/// The requests of a case in the form that its field `wire` has, full or short, with volatile values
/// replaced. `now` is the time of the replay, in seconds since the epoch.
Json describeWire(const std::vector<testsupport::SeenRequest>& requests, const Json& recorded, long now);

}  // namespace replay
