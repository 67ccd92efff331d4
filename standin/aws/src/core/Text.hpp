#pragma once

#include <string>
#include <string_view>

namespace standin::aws {

/// Without white space at either end: blanks, tabs, line ends, form feeds.
std::string_view trimmed(std::string_view text);

/// ASCII letters only, whatever the locale.
std::string lowerCase(std::string_view text);

}  // namespace standin::aws
