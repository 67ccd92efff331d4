#pragma once

#include <aws/core/utils/memory/stl/AWSStreamFwd.h>
#include <aws/core/utils/memory/stl/AWSString.h>

#include <sstream>

namespace Aws {

using StringStream = std::stringstream;
using IStringStream = std::istringstream;
using OStringStream = std::ostringstream;
using StringBuf = std::stringbuf;

}  // namespace Aws
