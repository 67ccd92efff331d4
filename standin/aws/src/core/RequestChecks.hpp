#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/SignatureV4.hpp"

/// What is read out of a request's parts, and looked at before libcurl reads more into them than was meant.
namespace standin::aws {

/// Whether a text names a host, with or without port, and can mean nothing else within a URL.
bool isAuthority(const std::string& text);

/// Whether a text can be a header's value: one without control characters, tabs aside.
bool isHeaderValue(const std::string& text);

/// Throws UnsendableRequest for a value that would end its header or be cut off.
void checkHeaders(const Headers& headers);

/// How many bytes the header `range` asks for at most; nothing without one, or with one of another form than
/// "bytes=first-last" or "bytes=-count".
std::optional<std::uint64_t> rangeLength(const Headers& headers);

/// The value of content-length; nothing without. Throws UnsendableRequest when it is not a number.
std::optional<std::uint64_t> contentLength(const Headers& headers);

}  // namespace standin::aws
