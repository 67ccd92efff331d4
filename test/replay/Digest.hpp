#pragma once

#include <string>
#include <string_view>

namespace replay {

std::string toHex(std::string_view bytes);

/// The 32 bytes of the digest.
std::string sha256(std::string_view bytes);

std::string sha256Hex(std::string_view bytes);

/// The 32 bytes of the code.
std::string hmacSha256(std::string_view key, std::string_view message);

}  // namespace replay
