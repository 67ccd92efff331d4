#pragma once

#include <array>
#include <memory>
#include <string>
#include <webproxy/webproxy.hpp>

namespace storage::s3provider {

/// Base of the two sources: what a source read when it was made. Immutable, so any thread may ask.
class ConfiguredProxy : public webproxy::ProxyTypeIntf {
public:
    webproxy::ProxyInfo getProxyInfo() const override;
    /// Whether a host was given; nothing else counts.
    bool isConfigured() const override;

protected:
    std::wstring m_host;
    int m_port = 0;  ///< 0 when none was given, or no number
    std::wstring m_username;
    std::wstring m_password;
};

/// The proxy that `ZR_PROXY_HOST`, `ZR_PROXY_PORT`, `ZR_PROXY_USERNAME` and `ZR_PROXY_PASSWORD` name; without
/// the host the others aren't read. Throws fl::i18n::conversion_error for what isn't UTF-8.
class EnvironmentProxyType : public ConfiguredProxy {
public:
    EnvironmentProxyType();
};

/// The proxy of the host's web preferences (node "orrery.web"), as far as they say that one is to be used.
/// Throws what the settings store throws.
class PreferencesProxyType : public ConfiguredProxy {
public:
    PreferencesProxyType();
};

/// One of the two.
enum class ProxyPlace { Environment, Preferences };

struct ProxySource {
    ProxyPlace place;
    /// A new source, which has read its place. Throws what its constructor throws.
    std::shared_ptr<webproxy::ProxyTypeIntf> (*make)();
};

/// Both, the preferred one first; after them comes the system.
extern const std::array<ProxySource, 2> proxySources;

/// Finds proxies in the environment, then in the preferences, then in the system's settings, as they are now.
std::shared_ptr<webproxy::ProxyProvider> makeProxyProvider();

}  // namespace storage::s3provider
