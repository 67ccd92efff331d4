#include "AwsS3ClientFactory.hpp"

#include <aws/core/config/AWSProfileConfigLoader.h>
#include <aws/s3/model/GetBucketLocationRequest.h>

#include <fl/i18n.hpp>
#include <foundation/log/diagnostic_logger.hpp>
#include <utility>

#include "ConfigurationSources.hpp"
#include "DiagnosticRecord.hpp"
#include "NumberParsing.hpp"
#include "ProxySources.hpp"
#include "ZRCredentialsProviderChain.hpp"

namespace storage::s3provider {

using Aws::Client::ClientConfiguration;
using Aws::S3::Model::BucketLocationConstraint;
using Aws::S3::Model::GetBucketLocationOutcome;

namespace {

// Lives from the loading of the library to its unloading.
foundation::log::diagnostic_logger clientFactoryLogger("storage::s3provider::AwsS3ClientFactory");

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
        logRecord(clientFactoryLogger, LogConfigurationFailures,
                  "Caught exception while parsing proxy information.\n what(): ", error.what());
    }
}

std::string certificatesFrom(const CertificateSource& source) {
    std::string place = environmentText(source.variable);
    return place.empty() ? source.ofSystem() : place;
}

}  // namespace

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

namespace {

void reportUnreadable(const NumberSetting& setting) {
    logRecord(clientFactoryLogger, LogConfigurationFailures, "Caught exception while parsing ",
              setting.variable);
}

}  // namespace

std::int64_t getDataAttempts() {
    return readNumber(attemptsSetting, reportUnreadable);
}

std::int64_t getRetryTimeMs() {
    return readNumber(retryTimeSetting, reportUnreadable);
}

S3ClientConfiguration getRetrySettings() {
    const std::int64_t attempts = getDataAttempts();
    return {attempts, getRetryTimeMs()};
}

std::string regionFromSource(const RegionSource& source) {
    if (source.variable) return environmentText(source.variable);
    return regionFromProfileFile(source.fileName(), regionProfile());
}

std::string regionFromEnvironment() {
    for (const RegionSource& source : regionSources) {
        if (std::string region = regionFromSource(source); !region.empty()) return region;
    }
    return {};
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): its callers give both away
std::string regionFromProfileFile(std::string fileName, std::string profile) {
    Aws::Config::AWSConfigFileProfileConfigLoader file(fileName, false);
    if (!file.Load()) return {};
    const auto& profiles = file.GetProfiles();
    const auto found = profiles.find(profile);
    return found == profiles.end() ? std::string() : found->second.GetRegion();
}

GetBucketLocationOutcome askBucketLocation(Aws::S3::S3Client& client, const std::string& bucket) {
    Aws::S3::Model::GetBucketLocationRequest request;
    request.SetBucket(bucket);
    return client.GetBucketLocation(request);
}

std::string queryBucketRegion(Aws::S3::S3Client& client, const std::string& bucket) {
    return regionFrom(askBucketLocation(client, bucket));
}

std::string regionFrom(const GetBucketLocationOutcome& outcome) {
    if (!outcome.IsSuccess()) return {};
    const auto constraint = outcome.GetResult().GetLocationConstraint();
    if (constraint == BucketLocationConstraint::NOT_SET) return "us-east-1";
    return Aws::S3::Model::BucketLocationConstraintMapper::GetNameForBucketLocationConstraint(constraint);
}

std::shared_ptr<Aws::S3::S3Client> makeS3Client(
    std::shared_ptr<Aws::Auth::AWSCredentialsProvider> credentials,
    std::shared_ptr<EndpointProvider> endpointProvider, const ClientConfiguration& configuration) {
    const Aws::S3::S3ClientConfiguration s3Configuration(
        configuration, Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy::Never, true,
        Aws::S3::US_EAST_1_REGIONAL_ENDPOINT_OPTION::NOT_SET);
    return std::make_shared<Aws::S3::S3Client>(std::move(credentials), std::move(endpointProvider),
                                               s3Configuration);
}

std::shared_ptr<Aws::S3::S3Client> makeS3Client(const ClientConfiguration& configuration) {
    auto endpointProvider = std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>();
    auto credentials = std::make_shared<ZRCredentialsProviderChain>();
    return makeS3Client(std::move(credentials), std::move(endpointProvider), configuration);
}

}  // namespace storage::s3provider
