#include <fl/i18n.hpp>
#include <optional>

#include "ConfigurationSources.hpp"
#include "ProxySources.hpp"
#include "explain/NoProxy.hpp"
#include "explain/Sections.hpp"
#include "explain/Wording.hpp"

namespace s3vfs::explain {

using storage::s3provider::environmentText;
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
        section_.places.push_back({name, proxy ? describe(*proxy) : "no HTTP proxy",
                                   wins ? "the first that knows of a proxy" : ""});
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

void addSwitch(Section& section) {
    const char* const variable = "ZR_AWS_PROXY";
    if (!storage::s3provider::usesProxies()) {
        section.places.push_back({variable, "OFF", "no proxy is looked for"});
    } else if (environmentText(variable).empty()) {
        section.places.push_back({variable, notSet, ""});
    } else {
        section.places.push_back({variable, "set, not OFF", ""});
        section.remarks.emplace_back("ZR_AWS_PROXY means something only if it is OFF, in capitals");
    }
}

bool namesAmazon() {
    return needsNoProxy(toUtf8(storage::s3provider::proxyLookupUrl()));
}

const char* noProxyVariable() {
    const bool isCapital = environmentText("no_proxy").empty() && !environmentText("NO_PROXY").empty();
    return isCapital ? "NO_PROXY" : "no_proxy";
}

Place placeOfNoProxy() {
    return {noProxyVariable(), variableShown(noProxyVariable()),
            namesAmazon() ? "it names s3.amazonaws.com, which keeps all proxies away" : ""};
}

/// The host library goes by the URL for which proxies are looked for, whatever the host of a request.
void remarkOnAHostThatIsNamedInVain(Section& section, const std::string& url) {
    if (needsNoProxy(url))
        section.remarks.push_back(std::string(noProxyVariable()) +
                                  " names the host of the requests, but only s3.amazonaws.com counts in it");
}

const char* reasonOfNone(bool found) {
    if (namesAmazon()) return "no_proxy says so";
    return found ? "the search failed" : "no place gave a proxy";
}

}  // namespace

Section explainProxy(const Answers& answers) {
    Section section{"Proxy", {}, {}};
    const bool isUsed = !answers.configuration.proxyHost.empty();
    addSwitch(section);
    if (!storage::s3provider::usesProxies()) return section;
    section.places.push_back(placeOfNoProxy());
    Survey survey(isUsed, section);
    for (const auto& source : storage::s3provider::proxySources)
        survey.add(nameOf(source.place), [&] { return proxyOf(source); });
    survey.add("the system", proxyOfSystem);
    if (isUsed) {
        remarkOnAHostThatIsNamedInVain(section, bucketUrl(answers));
    } else {
        section.places.push_back({"none", "a direct connection", reasonOfNone(survey.found())});
    }
    return section;
}

}  // namespace s3vfs::explain
