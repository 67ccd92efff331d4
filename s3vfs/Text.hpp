#pragma once

#include <boost/date_time/posix_time/ptime.hpp>

#include <string>

namespace s3vfs {

/// The text on one line and harmless to a terminal: control characters as \xHH. Other bytes are kept.
std::string printable(const std::string& text);

/// A time in UTC as 2015-10-21T07:28:00Z.
std::string timestamp(const boost::posix_time::ptime& time);

}  // namespace s3vfs
