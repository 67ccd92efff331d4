#include "core/CurlGlobal.hpp"

#include <curl/curl.h>

#include <stdexcept>
#include <string>

namespace standin::aws {

CurlGlobal::CurlGlobal() {
    const CURLcode code = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (code != CURLE_OK) throw std::runtime_error(std::string("libcurl: ") + curl_easy_strerror(code));
}

CurlGlobal::~CurlGlobal() {
    curl_global_cleanup();
}

}  // namespace standin::aws
