#pragma once

#include <boost/date_time/posix_time/ptime.hpp>

#include <string>

namespace s3vfs {

/// The text on one line and harmless to a terminal: the bytes of control characters, of line separators and
/// of marks that change the direction of text as \xHH, as well as those that aren't UTF-8.
std::string printable(const std::string& text);

/// A time in UTC as 2015-10-21T07:28:00Z; "-" for one that isn't known.
std::string timestamp(const boost::posix_time::ptime& time);

}  // namespace s3vfs
