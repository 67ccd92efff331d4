#include "core/Redirects.hpp"

#include <strings.h>

#include <array>

namespace standin::aws {
namespace {

using Aws::Http::HttpMethod;

constexpr int maxRedirects = 5;
constexpr std::array<const char*, 3> credentialHeaders = {"authorization", "x-amz-security-token",
                                                          "x-aws-ec2-metadata-token"};

/// A URL taken apart by libcurl, which will go where it reads the URL to point.
class ParsedUrl {
public:
    explicit ParsedUrl(const std::string& url) : handle_(curl_url()) {
        curl_url_set(handle_.get(), CURLUPART_URL, url.c_str(),
                     CURLU_NON_SUPPORT_SCHEME | CURLU_DEFAULT_SCHEME);
    }

    /// Empty when the URL has none.
    std::string part(CURLUPart which, unsigned flags = 0) const {
        char* text = nullptr;
        if (curl_url_get(handle_.get(), which, &text, flags) != CURLUE_OK) return {};
        const std::unique_ptr<char, decltype(&curl_free)> owned(text, &curl_free);
        return text;
    }

private:
    struct Cleanup {
        void operator()(CURLU* handle) const { curl_url_cleanup(handle); }
    };
    std::unique_ptr<CURLU, Cleanup> handle_;
};

bool isHttp(const std::string& url) {
    const std::string scheme = ParsedUrl(url).part(CURLUPART_SCHEME);
    return scheme == "http" || scheme == "https";
}

bool sameOrigin(const std::string& a, const std::string& b) {
    const ParsedUrl left(a);
    const ParsedUrl right(b);
    return left.part(CURLUPART_SCHEME) == right.part(CURLUPART_SCHEME) &&
           strcasecmp(left.part(CURLUPART_HOST).c_str(), right.part(CURLUPART_HOST).c_str()) == 0 &&
           left.part(CURLUPART_PORT, CURLU_DEFAULT_PORT) == right.part(CURLUPART_PORT, CURLU_DEFAULT_PORT);
}

bool becomesGet(HttpMethod method, int status) {
    switch (status) {
        case 301:
        case 302:
            return method == HttpMethod::HTTP_POST;
        case 303:
            return method == HttpMethod::HTTP_POST || method == HttpMethod::HTTP_PUT;
        default:
            return false;
    }
}

}  // namespace

std::string authorityOf(const std::string& urlOrHost) {
    const ParsedUrl url(urlOrHost);
    const std::string host = url.part(CURLUPART_HOST);
    const std::string port = url.part(CURLUPART_PORT, CURLU_NO_DEFAULT_PORT);
    return port.empty() ? host : host + ':' + port;
}

WireRequest redirected(WireRequest request, int status, const std::string& url) {
    if (becomesGet(request.method, status)) {
        request.method = HttpMethod::HTTP_GET;
        request.body = nullptr;
    }
    if (!sameOrigin(request.url, url)) {
        for (const char* const header : credentialHeaders)
            request.headers.erase(header);
    }
    request.url = url;
    return request;
}

WireAnswer sendFollowing(Connection& connection, WireRequest request) {
    WireAnswer answer;
    connection.perform(request, answer);
    for (int followed = 0; answer.code == CURLE_OK && !answer.redirectUrl.empty(); ++followed) {
        if (followed == maxRedirects) {
            answer.code = CURLE_TOO_MANY_REDIRECTS;
        } else if (!isHttp(answer.redirectUrl)) {
            answer.code = CURLE_UNSUPPORTED_PROTOCOL;
        } else {
            request = redirected(std::move(request), answer.status, answer.redirectUrl);
            connection.perform(request, answer);
        }
    }
    return answer;
}

}  // namespace standin::aws
