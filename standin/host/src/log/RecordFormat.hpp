#pragma once

#include <boost/log/expressions/formatter.hpp>

namespace foundation::log {

/// One record as one line, without the line end.
boost::log::formatter lineFormat();

}  // namespace foundation::log
