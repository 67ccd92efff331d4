#pragma once

#include "replay/RecordedCase.hpp"

#include <string>
#include <vector>

namespace replay {

/// Makes the case's calls against a server that plays its replies, and gives what was seen in the form of
/// RecordedCase::observation(). The SDK must have been initialized. May be called from several threads.
Json replayCase(const RecordedCase& recordedCase);

/// One line for each value that differs: where, what was expected of the recording with the linked libcurl,
/// what came.
std::vector<std::string> differences(const Json& recorded, const Json& seen);

/// In one line, with U+FFFD for what isn't UTF-8.
std::string printable(const Json& value);

}  // namespace replay
