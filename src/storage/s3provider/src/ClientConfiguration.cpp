#include "AwsS3ClientFactory.hpp"
#include "AwsS3ClientFactoryLogger.hpp"
#include "ConfigurationSources.hpp"
#include "DiagnosticRecord.hpp"
#include "EnvironmentText.hpp"
#include "ProxySources.hpp"

namespace storage::s3provider {

using Aws::Client::ClientConfiguration;

namespace {

constexpr unsigned maxConnections = 1000;
constexpr long timeoutMs = 300000;

Aws::Http::Scheme schemeFromEnvironment() {
    return environmentText("ZR_AWS_SCHEME") == "HTTP" ? Aws::Http::Scheme::HTTP : Aws::Http::Scheme::HTTPS;
}

std::string toUtf8(const std::wstring& text) {
    return fl::i18n::to_string(fl::i18n::to_ustring(text));
}

void setProxy(ClientConfiguration& configuration, const ProxyLookup& lookup) {
    const auto proxies = lookup(proxyLookupUrl());
    if (proxies.empty()) return;
    const webproxy::ProxyInfo& proxy = proxies.front();
    configuration.proxyHost = toUtf8(proxy.getHost());
    configuration.proxyUserName = toUtf8(proxy.getUserName());
    configuration.proxyPort = static_cast<unsigned>(proxy.getPort());
    configuration.proxyPassword = toUtf8(proxy.getPassword());
}

void trySetProxy(ClientConfiguration& configuration, const ProxyLookup& lookup) {
    try {
        setProxy(configuration, lookup);
    } catch (const std::exception& error) {
        logRecord(awsS3ClientFactoryLogger(), LogConfigurationFailures,
                  "Caught exception while parsing proxy information.\n what(): ", error.what());
    }
}

std::string certificatesFrom(const CertificateSource& source) {
    std::string place = environmentText(source.variable);
    return place.empty() ? source.ofSystem() : place;
}

}  // namespace

bool usesProxies() {
    return environmentText("ZR_AWS_PROXY") != "OFF";
}

std::wstring proxyLookupUrl() {
    return fl::i18n::to_wstring(u"https://s3.amazonaws.com/");
}

ClientConfiguration makeClientConfiguration() {
    return makeClientConfiguration(
        [](const std::wstring& url) { return makeProxyProvider()->getProxyListForUrl(url); });
}

ClientConfiguration makeClientConfiguration(const ProxyLookup& lookup) {
    ClientConfiguration configuration;
    configuration.scheme = schemeFromEnvironment();
    if (usesProxies()) trySetProxy(configuration, lookup);
    configuration.caPath = rootCertificatePath();
    configuration.caFile = rootCertificateFile();
    configuration.maxConnections = maxConnections;
    configuration.connectTimeoutMs = timeoutMs;
    configuration.requestTimeoutMs = timeoutMs;
    return configuration;
}

std::string rootCertificatePath() {
    return certificatesFrom(certificateFolder);
}

std::string rootCertificateFile() {
    return certificatesFrom(certificateFile);
}

}  // namespace storage::s3provider
