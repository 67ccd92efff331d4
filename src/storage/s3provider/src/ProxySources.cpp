#include "ProxySources.hpp"

#include <boost/lexical_cast/try_lexical_convert.hpp>
#include <contextmgr/ContextRegistry.hpp>
#include <cstdlib>
#include <fl/i18n.hpp>
#include <optional>
#include <settings/core/Settings.hpp>
#include <settings/in_orrery/settings.hpp>
#include <utility>
#include <vector>

namespace storage::s3provider {

namespace {

// In the process's own narrow environment; null when not set.
const char* variable(const char* name) {
    return std::getenv(name);  // NOLINT(concurrency-mt-unsafe): nobody sets variables while clients are made
}

std::optional<std::wstring> wideVariable(const char* name) {
    const char* const value = variable(name);
    if (value == nullptr) return std::nullopt;
    return fl::i18n::to_wstring(fl::i18n::to_ustring(value));
}

int portFrom(const std::string& text) {
    int port = 0;
    return boost::conversion::try_lexical_convert(text, port) ? port : 0;
}

std::shared_ptr<settings::core::Settings> webPreferences() {
    const auto root = settings::in_orrery::getSettingsRoot(contextmgr::ContextRegistry::getKvrID());
    return root->getSettingsByFullName("orrery.web");
}

template <class Source>
std::shared_ptr<webproxy::ProxyTypeIntf> make() {
    return std::make_shared<Source>();
}

}  // namespace

const std::array<ProxySource, 2> proxySources{{
    {ProxyPlace::Environment, &make<EnvironmentProxyType>},
    {ProxyPlace::Preferences, &make<PreferencesProxyType>},
}};

webproxy::ProxyInfo ConfiguredProxy::getProxyInfo() const {
    return {m_host, m_port, m_username, m_password};
}

bool ConfiguredProxy::isConfigured() const {
    return !m_host.empty();
}

EnvironmentProxyType::EnvironmentProxyType() {
    const auto host = wideVariable("ZR_PROXY_HOST");
    if (!host) return;
    m_host = *host;
    if (const char* const port = variable("ZR_PROXY_PORT")) m_port = portFrom(port);
    m_username = wideVariable("ZR_PROXY_USERNAME").value_or(L"");
    m_password = wideVariable("ZR_PROXY_PASSWORD").value_or(L"");
}

PreferencesProxyType::PreferencesProxyType() {
    const auto preferences = webPreferences();
    if (!preferences || !preferences->get<bool>("UseProxy", "")) return;
    const auto text = [&](const char* key) { return preferences->get<std::u16string>(key, ""); };
    m_host = fl::i18n::to_wstring(text("ProxyHost"));
    m_port = portFrom(fl::i18n::to_string(text("ProxyPort")));
    if (!preferences->get<bool>("UseProxyAuthentication", "")) return;
    m_username = fl::i18n::to_wstring(text("ProxyUsername"));
    m_password = fl::i18n::to_wstring(text("ProxyPassword"));
}

std::shared_ptr<webproxy::ProxyProvider> makeProxyProvider() {
    std::vector<std::shared_ptr<webproxy::ProxyTypeIntf>> sources;
    sources.reserve(std::size(proxySources));
    for (const ProxySource& source : proxySources)
        sources.push_back(source.make());
    std::shared_ptr<webproxy::SystemProxiesIntf> system = std::make_shared<webproxy::DefaultSystemProxies>();
    return std::make_shared<webproxy::ProxyProvider>(std::move(system), sources);
}

}  // namespace storage::s3provider
