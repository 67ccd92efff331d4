#include <fl/i18n.hpp>
#include <optional>

#include "ConfigurationSources.hpp"
#include "EnvironmentText.hpp"
#include "ProxySources.hpp"
#include "explain/Sections.hpp"
#include "explain/Wording.hpp"

namespace s3vfs::explain {

using storage::s3provider::ProxyPlace;

namespace {

std::string toUtf8(const std::wstring& text) {
    return fl::i18n::to_string(fl::i18n::to_ustring(text));
}

const char* nameOf(ProxyPlace place) {
    return place == ProxyPlace::Environment ? "ZR_PROXY_HOST and its like" : "settings, orrery.web";
}

std::string describe(const webproxy::ProxyInfo& proxy) {
    const std::string address =
        addressShown(toUtf8(proxy.getHost())) + ", port " + std::to_string(proxy.getPort());
    return proxy.getUserName().empty() && proxy.getPassword().empty() ? address : address + ", with a login";
}

std::optional<webproxy::ProxyInfo> proxyOf(const storage::s3provider::ProxySource& source) {
    const auto made = source.make();
    return made->isConfigured() ? std::optional(made->getProxyInfo()) : std::nullopt;
}

std::optional<webproxy::ProxyInfo> proxyOfSystem() {
    const auto proxies = webproxy::DefaultSystemProxies().getProxies(storage::s3provider::proxyLookupUrl());
    return proxies.empty() ? std::nullopt : std::optional(proxies.front());
}

/// Asks one place after the other, and knows whether the provider uses the answer.
class Survey {
public:
    Survey(bool anyIsUsed, Section& section) : anyIsUsed_(anyIsUsed), section_(section) {}

    template <class Ask>
    void add(const char* name, const Ask& ask) {
        try {
            addAnswer(name, ask());
        } catch (const fl::i18n::conversion_error&) {
            addUnreadable(name, "text that isn't UTF-8");  // the error would tell how long a password is
        } catch (const std::exception& error) {
            addUnreadable(name, shown(error.what()));
        }
    }

    bool found() const { return found_; }

private:
    void addUnreadable(const char* name, const std::string& why) {
        section_.places.push_back({name, "can't be read: " + why, ""});
        section_.remarks.emplace_back("a place that can't be read ends the search for a proxy");
    }

    void addAnswer(const char* name, const std::optional<webproxy::ProxyInfo>& proxy) {
        const bool wins = proxy && anyIsUsed_ && !found_;
        section_.places.push_back(
            {name, proxy ? describe(*proxy) : "none", wins ? "the first that knows of a proxy" : ""});
        if (wins && proxy->getHost().find_first_of(L"/@") != std::wstring::npos)
            section_.remarks.emplace_back("its host must be a name alone, without scheme, user and port");
        if (wins && (proxy->getPort() < 1 || proxy->getPort() > 65535))
            section_.remarks.emplace_back("its port is missing or no port number: nothing will listen there");
        found_ = found_ || proxy;
    }

    bool anyIsUsed_;
    bool found_ = false;
    Section& section_;
};

}  // namespace

Section explainProxy(const Answers& answers) {
    const auto& configuration = answers.configuration;
    Section section{"Proxy", {}, {}};
    const char* const theSwitch = "ZR_AWS_PROXY";
    if (!storage::s3provider::usesProxies()) {
        section.places.push_back({theSwitch, "OFF", "no proxy is looked for"});
        return section;
    }
    const bool isSet = !storage::s3provider::environmentText(theSwitch).empty();
    section.places.push_back({theSwitch, isSet ? "set, not OFF" : notSet, ""});
    if (isSet) section.remarks.emplace_back("ZR_AWS_PROXY means something only if it is OFF, in capitals");
    Survey survey(!configuration.proxyHost.empty(), section);
    for (const auto& source : storage::s3provider::proxySources)
        survey.add(nameOf(source.place), [&] { return proxyOf(source); });
    survey.add("the system", proxyOfSystem);
    if (!configuration.proxyHost.empty()) return section;
    section.places.push_back({"none", "a direct connection", "no place gave a proxy"});
    if (survey.found())
        section.places.back().use = "the proxies found don't count: no_proxy, or a failed search";
    return section;
}

}  // namespace s3vfs::explain
