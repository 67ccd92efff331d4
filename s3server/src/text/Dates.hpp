#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace s3server {

using TimePoint = std::chrono::system_clock::time_point;

/// "Fri, 24 May 2013 00:00:00 GMT", the date of HTTP headers (RFC 9110, section 5.6.7).
std::string httpDate(TimePoint time);
/// The same form read; nothing for any other.
std::optional<TimePoint> parseHttpDate(std::string_view text);
/// "2013-05-24T00:00:00.000Z", the date of S3's XML documents.
std::string xmlDate(TimePoint time);
/// "20130524T000000Z", the date of signatures, read; nothing for any other form.
std::optional<TimePoint> parseSigningDate(std::string_view text);

}  // namespace s3server
