#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace s3server {

/// Lower case.
std::string hex(std::string_view bytes);
std::string base64(std::string_view bytes);
/// Nothing if the text isn't padded, canonical base64.
std::optional<std::string> fromBase64(std::string_view text);

/// Everything but letters, digits and "-_.~" as %XX, upper case; keeps the characters of `kept`, too.
std::string percentEncoded(std::string_view text, std::string_view kept = "");
/// Nothing if a % isn't followed by two hexadecimal digits.
std::optional<std::string> percentDecoded(std::string_view text);
/// The same for a part of a query, where + is a blank.
std::optional<std::string> queryDecoded(std::string_view text);
/// How S3 writes keys in a listing with encoding-type=url: as a form would be, but with its slashes kept.
std::string listingEncoded(std::string_view text);

}  // namespace s3server
