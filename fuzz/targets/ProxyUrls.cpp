#include "webproxy/ProxyUrls.hpp"

#include <fl/i18n.hpp>

#include "FuzzTarget.hpp"
#include "text/Uri.hpp"
#include "webproxy/NoProxy.hpp"

using namespace fuzz;

namespace {

/// Takes the first line off the text.
std::string takeLine(std::string_view& text) {
    const auto line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return std::string(line);
}

void checkProxies(const std::string& url) {
    try {
        for (const auto& proxy : webproxy::httpProxiesAmong({url, "direct://", url})) {
            require(proxy.getPort() >= 0 && proxy.getPort() <= 65535, "a port is one");
            require(!proxy.getHost().empty(), "a proxy has a host");
        }
    } catch (const fl::i18n::conversion_error&) {
        // Not UTF-8, once decoded.
    }
}

void checkList(const std::string& list, const std::string& url) {
    try {
        const auto address = webproxy::addressOf(standin::parseUri(url));
        require(webproxy::isListed("*", address), "a star lists every host");
        require(!webproxy::isListed("", address), "an empty list has none");
        require(webproxy::isListed(list, address) || !webproxy::isListed(list + ",", address),
                "an end adds none");
    } catch (const std::invalid_argument&) {
        // No URL with a host.
    }
}

}  // namespace

// The first line is a list as in no_proxy, the second a URL: of a proxy, and of a server.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto text = textOf(data, size);
    const std::string list = takeLine(text);
    const std::string url = takeLine(text);
    checkProxies(url);
    checkList(list, url);
    return 0;
}
