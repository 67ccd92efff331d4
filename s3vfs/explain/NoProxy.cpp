#include "explain/NoProxy.hpp"

#include <exception>
#include <fl/i18n.hpp>
#include <memory>
#include <vector>
#include <webproxy/webproxy.hpp>

namespace s3vfs::explain {

namespace {

class SomeProxy : public webproxy::ProxyTypeIntf {
public:
    webproxy::ProxyInfo getProxyInfo() const override { return {L"proxy.invalid", 80, L"", L""}; }
    bool isConfigured() const override { return true; }
};

class NoProxies : public webproxy::SystemProxiesIntf {
public:
    std::vector<webproxy::ProxyInfo> getProxies(const std::wstring& /*url*/) override { return {}; }
};

}  // namespace

bool needsNoProxy(const std::string& url) {
    try {
        webproxy::ProxyProvider provider(std::make_shared<NoProxies>(), {std::make_shared<SomeProxy>()});
        return provider.getProxyListForUrl(fl::i18n::to_wstring(fl::i18n::to_ustring(url))).empty();
    } catch (const std::exception&) {
        return false;  // no URL with a host
    }
}

}  // namespace s3vfs::explain
