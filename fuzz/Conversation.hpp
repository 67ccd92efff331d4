#pragma once

#include <string>
#include <string_view>

#include "s3server/Options.hpp"

namespace fuzz {

/// Sends a client's bytes to a server that holds a TestBucket, and requires that the answers are right HTTP,
/// and the same ones whether the bytes arrive at once or one by one. Gives back what the server sent.
std::string converse(std::string_view bytes, const s3server::Options& options);

}  // namespace fuzz
