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
    std::string url;  ///< encoded
    Headers headers;  ///< all but those libcurl adds: Accept, Expect, the proxy's; Host if not here
    RequestBody* body = nullptr;  ///< not owned; null: none is sent
    /// In bytes; a longer body fails the transfer with CURLE_FILESIZE_EXCEEDED. The default is for documents:
    /// S3's longest, a page of 1000 keys of 1024 bytes, each byte encoded by three, is a quarter of it.
    std::size_t longestAnswer = std::size_t{16} * 1024 * 1024;
    /// A success brings an object's bytes instead of a document: as many as a range in `headers` asks for;
    /// without one as many as the response announces, and 64 MiB when it announces none.
    bool answersContent = false;
};

/// What came back, as far as it came.
struct WireAnswer {
    CURLcode code = CURLE_OK;  ///< other than CURLE_OK: the transfer failed
    int status = 0;
    Headers headers;            ///< of all answers to the request; the first of equal names
    std::string body;           ///< of the last answer
    std::string remoteAddress;  ///< of the last server connected to; empty: none was
    std::string redirectUrl;    ///< as libcurl reads it, perhaps relative still; empty: not a redirect
};

/// A libcurl handle, with the connections it keeps open. For one thread at a time.
class Connection {
public:
    explicit Connection(const Aws::Client::ClientConfiguration& configuration);

    /// Sends one request and reads its answer whole; redirects are not followed. Adds to `answer.headers`,
    /// replaces the rest of `answer`. After a failure its connections are forgotten.
    void perform(const WireRequest& request, WireAnswer& answer);

    /// As after a failure: the next request makes a connection of its own.
    void forgetConnections();

private:
    struct Cleanup {
        void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
    };

    void setMethod(const WireRequest& request);

    std::unique_ptr<CURL, Cleanup> handle_;
    bool disableExpectHeader_;
};

}  // namespace standin::aws
