#pragma once

#include <string>
#include <string_view>

namespace standin::aws {

/// Without these characters at either end; by default all ASCII white space.
std::string_view trimmed(std::string_view text, std::string_view unwanted = " \t\r\n\v\f");

/// ASCII letters only, whatever the locale.
std::string lowerCase(std::string_view text);

}  // namespace standin::aws
