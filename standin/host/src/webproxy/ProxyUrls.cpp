#include "webproxy/ProxyUrls.hpp"

#include "fl/i18n.hpp"
#include "text/PercentEncoding.hpp"
#include "text/Uri.hpp"
#include "webproxy/Address.hpp"

#include <optional>
#include <stdexcept>

namespace webproxy {

namespace {

using standin::Uri;

std::wstring wide(const std::string& text) {
    return fl::i18n::to_wstring(fl::i18n::to_ustring(text));
}

std::optional<Uri> parsed(const std::string& url) {
    try {
        return standin::parseUri(url.find("://") == std::string::npos ? "http://" + url : url);
    } catch (const standin::UriSyntaxError&) {
        return std::nullopt;
    }
}

std::optional<Address> addressIn(const Uri& uri) {
    try {
        return addressOf(uri);
    } catch (const std::invalid_argument&) {
        return std::nullopt;
    }
}

std::optional<ProxyInfo> httpProxy(const Uri& uri) {
    const auto address = addressIn(uri);
    if (uri.scheme != "http" || !address) return std::nullopt;
    const std::string user = uri.userInfo.value_or("");
    const auto colon = user.find(':');
    const std::string password = colon == std::string::npos ? "" : user.substr(colon + 1);
    return ProxyInfo(wide(address->host), address->port, wide(standin::percentDecoded(user.substr(0, colon))),
                     wide(standin::percentDecoded(password)));
}

}  // namespace

std::vector<ProxyInfo> httpProxiesAmong(const std::vector<std::string>& urls) {
    std::vector<ProxyInfo> proxies;
    for (const std::string& url : urls) {
        const auto uri = parsed(url);
        if (!uri) continue;
        if (uri->scheme == "direct") break;
        if (const auto proxy = httpProxy(*uri)) proxies.push_back(*proxy);
    }
    return proxies;
}

}  // namespace webproxy
