#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "s3server/Headers.hpp"

namespace s3server {

/// ASCII only.
std::string lowered(std::string_view text);
/// Without blanks and tabs at both ends.
std::string_view trimmed(std::string_view text);
bool startsWith(std::string_view text, std::string_view start);
bool endsWith(std::string_view text, std::string_view end);
/// The pieces between separators; one empty piece for an empty text.
std::vector<std::string_view> split(std::string_view text, char separator);
/// Text before and after the first separator; the second part is empty if there is none.
std::pair<std::string_view, std::string_view> splitAtFirst(std::string_view text, char separator);
/// Digits only; nothing for anything else and for what doesn't fit.
std::optional<std::uint64_t> parseNumber(std::string_view text);

/// The first header of that name, which is given in lower case; null if there is none.
const std::string* findHeader(const Headers& headers, std::string_view name);
/// The same, empty if there is none.
std::string_view headerText(const Headers& headers, std::string_view name);

}  // namespace s3server
