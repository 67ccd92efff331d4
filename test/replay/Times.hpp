#pragma once

#include "replay/RecordedCase.hpp"

#include <chrono>

namespace replay {

/// Adds the milliseconds since `start` to the description of what took them.
void addElapsed(Json& described, std::chrono::steady_clock::time_point start);

/// `seen` with each time that fits the one expected at its place replaced by that one, or removed if none is
/// expected, as none is where nothing waited. Half to five times the expected time fits, and five seconds
/// always do at most: a wait that is missing or endless shows, and a busy machine doesn't.
Json withFittingTimes(Json seen, const Json& expected);

}  // namespace replay
