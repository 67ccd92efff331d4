#include "core/Redirects.hpp"

#include <strings.h>

#include <algorithm>
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
        curl_url_set(handle_.get(), CURLUPART_URL, url.c_str(), CURLU_NON_SUPPORT_SCHEME);
    }

    /// Goes where a Location leads, blanks in it included. False when that is nowhere.
    bool follow(const std::string& location) {
        return curl_url_set(handle_.get(), CURLUPART_URL, location.c_str(),
                            CURLU_NON_SUPPORT_SCHEME | CURLU_URLENCODE | CURLU_ALLOW_SPACE) == CURLUE_OK;
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

bool sameHost(const ParsedUrl& a, const ParsedUrl& b) {
    return strcasecmp(a.part(CURLUPART_HOST).c_str(), b.part(CURLUPART_HOST).c_str()) == 0;
}

bool sameOrigin(const ParsedUrl& a, const ParsedUrl& b) {
    return sameHost(a, b) && a.part(CURLUPART_SCHEME) == b.part(CURLUPART_SCHEME) &&
           a.part(CURLUPART_PORT, CURLU_DEFAULT_PORT) == b.part(CURLUPART_PORT, CURLU_DEFAULT_PORT);
}

/// Where the port begins, with its colon. An IPv6 address has colons of its own, in brackets.
std::size_t endOfHost(std::string_view authority) {
    const bool bracketed = !authority.empty() && authority.front() == '[';
    return std::min(authority.find(':', bracketed ? authority.find(']') : 0), authority.size());
}

bool becomesGet(const WireRequest& request, int status) {
    if (request.body == nullptr || request.body->size() == 0) return false;
    switch (status) {
        case 301:
        case 302:
            return request.method == HttpMethod::HTTP_POST;
        case 303:
            return request.method == HttpMethod::HTTP_POST || request.method == HttpMethod::HTTP_PUT;
        default:
            return false;
    }
}

/// Where a request to `url` is redirected to; CURLE_OK when it can be sent there.
CURLcode follow(std::string& url, const std::string& location) {
    ParsedUrl parsed(url);
    if (!parsed.follow(location)) return CURLE_URL_MALFORMAT;
    url = parsed.part(CURLUPART_URL);
    const std::string scheme = parsed.part(CURLUPART_SCHEME);
    return scheme == "http" || scheme == "https" ? CURLE_OK : CURLE_UNSUPPORTED_PROTOCOL;
}

}  // namespace

std::string hostOf(std::string_view url) {
    constexpr std::string_view separator = "://";
    const auto scheme = url.find(separator);
    if (scheme == std::string_view::npos || url.find_first_of("/?#") < scheme) return {};
    url.remove_prefix(scheme + separator.size());
    const std::string_view authority = url.substr(0, url.find_first_of("/?#"));
    const std::string_view host = authority.substr(0, endOfHost(authority));
    const bool bracketOpen = !host.empty() && host.front() == '[' && host.back() != ']';
    return std::string(bracketOpen || authority.find('@') != std::string_view::npos ? "" : host);
}

std::string withHost(const std::string& authority, std::string_view host) {
    return std::string(host).append(authority, endOfHost(authority));
}

WireRequest redirected(WireRequest request, int status, const std::string& url) {
    if (becomesGet(request, status)) {
        request.method = HttpMethod::HTTP_GET;
        request.body = nullptr;
    }
    const ParsedUrl before(request.url);
    const ParsedUrl after(url);
    if (!sameHost(before, after)) request.headers.erase("host");
    if (!sameOrigin(before, after)) {
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
        std::string url = request.url;
        answer.code = followed == maxRedirects ? CURLE_TOO_MANY_REDIRECTS : follow(url, answer.redirectUrl);
        if (answer.code != CURLE_OK) {
            connection.forgetConnections();
        } else {
            request = redirected(std::move(request), answer.status, url);
            connection.perform(request, answer);
        }
    }
    return answer;
}

}  // namespace standin::aws
