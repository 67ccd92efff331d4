#pragma once

#include <string>
#include <string_view>

namespace foundation::log {

/// The text with control characters, line ends, bidirectional controls, backslashes and bytes that aren't
/// UTF-8 as escape sequences, so that it is one line and shows what it holds.
std::string escaped(std::string_view text);

}  // namespace foundation::log
