#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace webproxy {

/// An HTTP proxy.
class ProxyInfo {
public:
    ProxyInfo(const std::wstring& host, int port, const std::wstring& userName, const std::wstring& password)
        : host_(host), port_(port), userName_(userName), password_(password) {}

    const std::wstring& getHost() const { return host_; }
    int getPort() const { return port_; }
    const std::wstring& getUserName() const { return userName_; }
    const std::wstring& getPassword() const { return password_; }

private:
    std::wstring host_;
    int port_;
    std::wstring userName_;
    std::wstring password_;
};

/// A source that knows of one proxy or none. A provider may ask it from any thread.
///
/// The order of the declarations is part of the binary interface.
class ProxyTypeIntf {
public:
    ProxyTypeIntf() = default;
    ProxyTypeIntf(const ProxyTypeIntf&) = delete;
    ProxyTypeIntf& operator=(const ProxyTypeIntf&) = delete;

    virtual ~ProxyTypeIntf() = default;

    /// The proxy; without meaning when the source isn't configured.
    virtual ProxyInfo getProxyInfo() const = 0;

    virtual bool isConfigured() const = 0;
};

/// The proxies that the system has been set up with. A provider may ask it from any thread.
class SystemProxiesIntf {
public:
    SystemProxiesIntf() = default;
    SystemProxiesIntf(const SystemProxiesIntf&) = delete;
    SystemProxiesIntf& operator=(const SystemProxiesIntf&) = delete;

    virtual ~SystemProxiesIntf() = default;

    /// Proxies for the URL, the preferred first; none means a direct connection.
    virtual std::vector<ProxyInfo> getProxies(const std::wstring& url) = 0;
};

/// What libproxy finds: the variables `http_proxy`, `https_proxy` and `no_proxy`, the desktop's settings, and
/// proxy auto-configuration where those ask for it. SOCKS and HTTPS proxies are left out, as is all that
/// comes after a direct connection. A proxy without port has 80.
class DefaultSystemProxies : public SystemProxiesIntf {
public:
    /// Throws fl::i18n::conversion_error for a URL that isn't well-formed wide text, and when a proxy's name
    /// or password isn't UTF-8.
    std::vector<ProxyInfo> getProxies(const std::wstring& url) override;
};

/// Chooses the proxies for a URL.
class ProxyProvider {
public:
    /// The sources come first, in their order; then the system. None of the pointers may be null.
    ProxyProvider(std::shared_ptr<SystemProxiesIntf> system,
                  const std::vector<std::shared_ptr<ProxyTypeIntf>>& sources);

    /// The proxies for an absolute URL, the preferred first; none means a direct connection. These are the
    /// proxies of all sources that are configured, followed by the system's; but none at all when `no_proxy`
    /// (or `NO_PROXY`) has the URL's host, whoever knows of a proxy.
    ///
    /// `no_proxy` is a list of names separated by commas or blanks: a name stands for itself and all names
    /// below it, a leading dot changes nothing, `name:port` is for that port only, `*` is for everything.
    ///
    /// A URL's answer is found once; the reference is valid for the life of the provider. Any thread, while
    /// no other changes the environment. Throws std::invalid_argument for what isn't a URL with a host,
    /// fl::i18n::conversion_error for what isn't well-formed wide text, and what a source throws.
    const std::vector<ProxyInfo>& getProxyListForUrl(const std::wstring& url);

private:
    const std::shared_ptr<SystemProxiesIntf> system_;
    const std::vector<std::shared_ptr<ProxyTypeIntf>> sources_;
    std::mutex mutex_;                                        // held while an answer is found
    std::map<std::wstring, std::vector<ProxyInfo>> answers_;  // by URL; guarded by mutex_
};

}  // namespace webproxy
