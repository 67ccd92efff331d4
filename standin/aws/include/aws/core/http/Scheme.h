#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>

namespace Aws::Http {

enum class Scheme { HTTP, HTTPS };

namespace SchemeMapper {

/// "http" or "https".
const char* ToString(Scheme scheme);

/// Any letter case; a name that is neither is taken for HTTPS.
Scheme FromString(const char* name);

}  // namespace SchemeMapper

}  // namespace Aws::Http
