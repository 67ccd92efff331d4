#pragma once

#include <aws/core/utils/memory/stl/AWSMap.h>
#include <aws/core/utils/memory/stl/AWSString.h>

#include <utility>

namespace Aws::Http {

enum class HttpMethod { HTTP_GET, HTTP_POST, HTTP_DELETE, HTTP_PUT, HTTP_HEAD, HTTP_PATCH };

namespace HttpMethodMapper {

/// "GET" and so on, as on the request line.
const char* GetNameForHttpMethod(HttpMethod method);

}  // namespace HttpMethodMapper

/// Lower-case names to values.
using HeaderValueCollection = Aws::Map<Aws::String, Aws::String>;

using HeaderValuePair = std::pair<Aws::String, Aws::String>;

}  // namespace Aws::Http
