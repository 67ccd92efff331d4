#pragma once

#include <string>

namespace Aws {

using String = std::string;
using WString = std::wstring;

}  // namespace Aws
