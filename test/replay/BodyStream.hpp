#pragma once

#include "replay/RecordedCase.hpp"

#include <istream>
#include <memory>

namespace replay {

/// The stream of an upload, as the `Body` of a case describes it; null for the kind "null". Throws
/// std::runtime_error for a kind it doesn't know.
std::shared_ptr<std::iostream> makeBodyStream(const Json& description);

/// The fields `stream_position_after` and `stream_state_after`; none without a stream.
Json describeAfterCall(std::iostream* stream);

}  // namespace replay
