#pragma once

#include <string>
#include <string_view>

namespace standin::aws {

/// Percent-encoding (RFC 3986) with upper-case digits. Letters, digits and "-_.~" always stay.

/// A query name or value: nothing else stays.
std::string encodeQueryText(std::string_view text);

/// A path as the request line has it: "/" and "$&,:=@" stay as well.
std::string encodeWirePath(std::string_view path);

/// One segment of such a path: "/" is encoded.
std::string encodePathSegment(std::string_view segment);

/// A path as the signature covers it: "/" stays as well.
std::string encodeCanonicalPath(std::string_view path);

}  // namespace standin::aws
