#include <aws/core/http/HttpResponse.h>
#include <aws/core/http/HttpTypes.h>
#include <aws/core/http/Scheme.h>
#include <strings.h>

#include <algorithm>
#include <iterator>

namespace Aws::Http {

const char* HttpMethodMapper::GetNameForHttpMethod(HttpMethod method) {
    switch (method) {
        case HttpMethod::HTTP_GET:
            return "GET";
        case HttpMethod::HTTP_POST:
            return "POST";
        case HttpMethod::HTTP_DELETE:
            return "DELETE";
        case HttpMethod::HTTP_PUT:
            return "PUT";
        case HttpMethod::HTTP_HEAD:
            return "HEAD";
        case HttpMethod::HTTP_PATCH:
            return "PATCH";
    }
    return "GET";
}

const char* SchemeMapper::ToString(Scheme scheme) {
    return scheme == Scheme::HTTP ? "http" : "https";
}

Scheme SchemeMapper::FromString(const char* name) {
    return strcasecmp(name, "http") == 0 ? Scheme::HTTP : Scheme::HTTPS;
}

bool IsRetryableHttpResponseCode(HttpResponseCode code) {
    constexpr int retryable[] = {408, 419, 429, 440, 500, 502, 503, 504, 509, 598, 599};
    return std::find(std::begin(retryable), std::end(retryable), static_cast<int>(code)) !=
           std::end(retryable);
}

}  // namespace Aws::Http
