#pragma once

#include <aws/core/client/ClientConfiguration.h>
#include <curl/curl.h>

#include <string>

#include "core/UnsendableRequest.hpp"

namespace standin::aws {

/// Throws UnsendableRequest when libcurl refuses: then it lacks what the configuration asks for.
template <typename Value>
void setOption(CURL* handle, CURLoption option, Value value) {
    const CURLcode code = curl_easy_setopt(handle, option, value);
    if (code != CURLE_OK)
        throw UnsendableRequest(std::string("libcurl refuses an option: ") + curl_easy_strerror(code));
}

/// What is the same for all requests of a client: timeouts, TLS, proxy, protocols, buffers.
void setFixedOptions(CURL* handle, const Aws::Client::ClientConfiguration& configuration);

}  // namespace standin::aws
