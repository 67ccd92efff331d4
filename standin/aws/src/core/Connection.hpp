#pragma once

#include <aws/core/client/ClientConfiguration.h>
#include <aws/core/http/HttpTypes.h>
#include <curl/curl.h>

#include <cstddef>
#include <memory>
#include <string>

#include "core/RequestBody.hpp"
#include "core/SignatureV4.hpp"

namespace standin::aws {

/// One request as it goes on the wire.
struct WireRequest {
    Aws::Http::HttpMethod method = Aws::Http::HttpMethod::HTTP_GET;
    std::string url;              ///< encoded
    Headers headers;              ///< all but those libcurl adds: Host, Accept, Expect and the proxy's
    RequestBody* body = nullptr;  ///< not owned; null: none is sent
    /// In bytes; a longer body fails the transfer with CURLE_FILESIZE_EXCEEDED. The default is for documents:
    /// S3's longest, a page of 1000 keys of 1024 bytes, each byte encoded by three, is a quarter of it.
    std::size_t longestAnswer = std::size_t{16} * 1024 * 1024;
    bool answersContent = false;  ///< a success's body may have any length, whatever is said above
};

/// What came back, as far as it came.
struct WireAnswer {
    CURLcode code = CURLE_OK;  ///< other than CURLE_OK: the transfer failed
    int status = 0;
    Headers headers;            ///< of all answers to the request; the first of equal names
    std::string body;           ///< of the last answer
    std::string remoteAddress;  ///< empty: no connection was made
    std::string redirectUrl;    ///< absolute; empty: not a redirect
};

/// A libcurl handle, with the connections it keeps open. For one thread at a time.
class Connection {
public:
    explicit Connection(const Aws::Client::ClientConfiguration& configuration);

    /// Sends one request and reads its answer whole; redirects are not followed. Adds to `answer.headers`,
    /// replaces the rest of `answer`.
    void perform(const WireRequest& request, WireAnswer& answer);

private:
    struct Cleanup {
        void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
    };

    void setMethod(const WireRequest& request);

    std::unique_ptr<CURL, Cleanup> handle_;
    bool disableExpectHeader_;
};

}  // namespace standin::aws
