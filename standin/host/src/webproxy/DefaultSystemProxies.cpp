#include "fl/i18n.hpp"
#include "webproxy/ProxyUrls.hpp"
#include "webproxy/webproxy.hpp"

#include <proxy.h>

#include <memory>
#include <mutex>

namespace webproxy {

namespace {

using Factory = std::unique_ptr<pxProxyFactory, decltype(&px_proxy_factory_free)>;
using Urls = std::unique_ptr<char*, decltype(&px_proxy_factory_free_proxies)>;

std::vector<std::string> systemProxyUrls(const std::string& url) {
    // libproxy promises safety for one factory only, and its modules keep state for all.
    static std::mutex mutex;
    const std::lock_guard lock(mutex);

    const Factory factory(px_proxy_factory_new(), &px_proxy_factory_free);
    if (!factory) return {};
    const Urls urls(px_proxy_factory_get_proxies(factory.get(), url.c_str()), &px_proxy_factory_free_proxies);
    std::vector<std::string> copies;
    for (char** at = urls.get(); at != nullptr && *at != nullptr; ++at)
        copies.emplace_back(*at);
    return copies;
}

}  // namespace

std::vector<ProxyInfo> DefaultSystemProxies::getProxies(const std::wstring& url) {
    return httpProxiesAmong(systemProxyUrls(fl::i18n::to_string(fl::i18n::to_ustring(url))));
}

}  // namespace webproxy
