#include "ProxySources.hpp"

#include <fl/i18n.hpp>
#include <settings/core/Settings.hpp>
#include <settings/in_orrery/settings.hpp>

#include "support/plugin/FactoryTest.hpp"

using namespace testsupport;
using namespace storage::s3provider;
using ::testing::ElementsAre;

namespace {

/// Preferences in memory.
class Preferences {
public:
    explicit Preferences(const std::string& web) {
        settings::in_orrery::useSettingsRoot(
            settings::core::Settings::fromJson("{\"orrery\": {\"web\": " + web + "}}"));
    }
    ~Preferences() { settings::in_orrery::useSettingsRoot(nullptr); }
    Preferences(const Preferences&) = delete;
    Preferences& operator=(const Preferences&) = delete;
};

template <typename Source>
void expectProxy(Source& source, const std::wstring& host, int port, const std::wstring& user,
                 const std::wstring& password) {
    const webproxy::ProxyInfo proxy = source.getProxyInfo();
    EXPECT_EQ(proxy.getHost(), host);
    EXPECT_EQ(proxy.getPort(), port);
    EXPECT_EQ(proxy.getUserName(), user);
    EXPECT_EQ(proxy.getPassword(), password);
    EXPECT_EQ(source.isConfigured(), !host.empty());
}

class EnvironmentProxy : public FactoryTest {};

TEST_F(EnvironmentProxy, IsReadWhole) {
    environment.set("ZR_PROXY_HOST", "pr\xC3\xB6xy.example");
    environment.set("ZR_PROXY_PORT", "3128");
    environment.set("ZR_PROXY_USERNAME", "user");
    environment.set("ZR_PROXY_PASSWORD", "p@ss:w\xC3\xB6rd");
    EnvironmentProxyType source;
    expectProxy(source, L"pr\u00F6xy.example", 3128, L"user", L"p@ss:w\u00F6rd");
}

TEST_F(EnvironmentProxy, IsNotReadWithoutHost) {
    environment.set("ZR_PROXY_PORT", "3128");
    environment.set("ZR_PROXY_USERNAME", "\xFF");  // would throw
    EnvironmentProxyType source;
    expectProxy(source, L"", 0, L"", L"");
}

TEST_F(EnvironmentProxy, IsReadButNotConfiguredWithAnEmptyHost) {
    environment.set("ZR_PROXY_HOST", "");
    environment.set("ZR_PROXY_PORT", "3128");
    environment.set("ZR_PROXY_USERNAME", "user");
    EnvironmentProxyType source;
    expectProxy(source, L"", 3128, L"user", L"");
}

TEST_F(EnvironmentProxy, HasPort0WithoutOne) {
    environment.set("ZR_PROXY_HOST", "proxy.example");
    EnvironmentProxyType source;
    expectProxy(source, L"proxy.example", 0, L"", L"");
}

TEST_F(EnvironmentProxy, ReadsPortsAsWholeNumbersOnly) {
    struct Case {
        const char* text;
        int port;
    };
    environment.set("ZR_PROXY_HOST", "proxy.example");
    for (const auto& [text, port] :
         {Case{"8080", 8080}, Case{"+3128", 3128}, Case{"-1", -1}, Case{"2147483647", 2147483647},
          Case{"-2147483648", -2147483647 - 1}, Case{"2147483648", 0}, Case{"8080x", 0}, Case{"", 0},
          Case{"99999999999", 0}, Case{" 8080", 0}, Case{"8080 ", 0}, Case{"0x10", 0}, Case{"1.5", 0},
          Case{"\xFF", 0}}) {
        environment.set("ZR_PROXY_PORT", text);
        EnvironmentProxyType source;
        expectProxy(source, L"proxy.example", port, L"", L"");
    }
}

TEST_F(EnvironmentProxy, IsReadOnBehindABadPort) {
    environment.set("ZR_PROXY_HOST", "proxy.example");
    environment.set("ZR_PROXY_PORT", "8080x");
    environment.set("ZR_PROXY_USERNAME", "user");
    environment.set("ZR_PROXY_PASSWORD", "password");
    EnvironmentProxyType source;
    expectProxy(source, L"proxy.example", 0, L"user", L"password");
}

TEST_F(EnvironmentProxy, ThrowsForWhatIsNotText) {
    environment.set("ZR_PROXY_HOST", "\xFF");
    EXPECT_THROW(EnvironmentProxyType(), fl::i18n::conversion_error);
    environment.set("ZR_PROXY_HOST", "");
    environment.set("ZR_PROXY_PASSWORD", "\xFF");
    EXPECT_THROW(EnvironmentProxyType(), fl::i18n::conversion_error);
}

class PreferencesProxy : public FactoryTest {};

TEST_F(PreferencesProxy, IsReadWhole) {
    const Preferences preferences(R"({"UseProxy": true, "ProxyHost": "proxy.example", "ProxyPort": "3128",
        "UseProxyAuthentication": true, "ProxyUsername": "user", "ProxyPassword": "pässword"})");
    PreferencesProxyType source;
    expectProxy(source, L"proxy.example", 3128, L"user", L"p\u00E4ssword");
}

TEST_F(PreferencesProxy, NeedsNoAuthentication) {
    const Preferences preferences(R"({"UseProxy": true, "ProxyHost": "proxy.example", "ProxyPort": "3128",
        "UseProxyAuthentication": false, "ProxyUsername": "user", "ProxyPassword": "password"})");
    PreferencesProxyType source;
    expectProxy(source, L"proxy.example", 3128, L"", L"");
}

TEST_F(PreferencesProxy, IsReadOnBehindABadPort) {
    const Preferences preferences(R"({"UseProxy": true, "ProxyHost": "proxy.example", "ProxyPort": "x",
        "UseProxyAuthentication": true, "ProxyUsername": "user", "ProxyPassword": "password"})");
    PreferencesProxyType source;
    expectProxy(source, L"proxy.example", 0, L"user", L"password");
}

TEST_F(PreferencesProxy, ThrowsWhatTheSettingsThrow) {
    const Preferences preferences(R"({"UseProxy": true, "ProxyHost": "proxy.example", "ProxyPort": 3128})");
    EXPECT_THROW(PreferencesProxyType(), settings::core::SettingsError);
}

TEST_F(PreferencesProxy, IsOffUnlessItIsToBeUsed) {
    const Preferences preferences(
        R"({"UseProxy": false, "ProxyHost": "proxy.example", "ProxyPort": "3128"})");
    PreferencesProxyType source;
    expectProxy(source, L"", 0, L"", L"");
}

TEST_F(PreferencesProxy, IsOffWithoutPreferences) {
    settings::in_orrery::useSettingsRoot(settings::core::Settings::fromJson("{}"));
    PreferencesProxyType source;
    settings::in_orrery::useSettingsRoot(nullptr);
    expectProxy(source, L"", 0, L"", L"");
}

/// A proxy in each place that one may be found in.
class ProxyOrder : public FactoryTest {
protected:
    ProxyOrder() {
        for (const char* const variable : {"http_proxy", "https_proxy"})
            environment.set(variable, "http://system.example:3");
    }

    static std::vector<std::wstring> hosts() {
        std::vector<std::wstring> hosts;
        const auto provider = makeProxyProvider();
        for (const auto& proxy : provider->getProxyListForUrl(L"https://s3.amazonaws.com/"))
            hosts.push_back(proxy.getHost());
        return hosts;
    }

    const Preferences preferences{
        R"({"UseProxy": true, "ProxyHost": "preferred.example", "ProxyPort": "1"})"};
};

TEST_F(ProxyOrder, IsEnvironmentPreferencesSystem) {
    environment.set("ZR_PROXY_HOST", "environment.example");
    EXPECT_THAT(hosts(), ElementsAre(L"environment.example", L"preferred.example", L"system.example"));
}

TEST_F(ProxyOrder, LeavesOutASourceWithoutProxy) {
    EXPECT_THAT(hosts(), ElementsAre(L"preferred.example", L"system.example"));
}

}  // namespace
