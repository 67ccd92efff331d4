#include "fl/i18n.hpp"
#include "text/Uri.hpp"
#include "webproxy/Address.hpp"
#include "webproxy/NoProxy.hpp"
#include "webproxy/webproxy.hpp"

namespace webproxy {

namespace {

Address destinationOf(const std::wstring& url) {
    return addressOf(standin::parseUri(fl::i18n::to_string(fl::i18n::to_ustring(url))));
}

std::string noProxyList() {
    const std::u16string list = fl::i18n::getenv("no_proxy");
    return fl::i18n::to_string(list.empty() ? fl::i18n::getenv("NO_PROXY") : list);
}

void append(std::vector<ProxyInfo>& proxies, const std::vector<ProxyInfo>& more) {
    proxies.insert(proxies.end(), more.begin(), more.end());
}

}  // namespace

ProxyProvider::ProxyProvider(std::shared_ptr<SystemProxiesIntf> system,
                             const std::vector<std::shared_ptr<ProxyTypeIntf>>& sources)
    : system_(std::move(system)), sources_(sources) {}

const std::vector<ProxyInfo>& ProxyProvider::getProxyListForUrl(const std::wstring& url) {
    const std::lock_guard lock(mutex_);
    const auto known = answers_.find(url);
    if (known != answers_.end()) return known->second;

    std::vector<ProxyInfo> proxies;
    if (!isListed(noProxyList(), destinationOf(url))) {
        for (const auto& source : sources_)
            if (source->isConfigured()) proxies.push_back(source->getProxyInfo());
        append(proxies, system_->getProxies(url));
    }
    return answers_.emplace(url, std::move(proxies)).first->second;
}

}  // namespace webproxy
