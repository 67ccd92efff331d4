#pragma once

#include <string_view>
#include <vector>

#include "s3server/RequestRecord.hpp"

namespace fuzz {

/// Requires that the bytes are the answers to these requests and nothing else, each as RFC 9112 wants it: a
/// status line, header lines without control characters, and a body of the length announced; errors with a
/// well-formed document in UTF-8.
void requireAnswers(std::string_view bytes, const std::vector<s3server::RequestRecord>& requests);

}  // namespace fuzz
