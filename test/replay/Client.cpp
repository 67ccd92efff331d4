#include "replay/Client.hpp"

#include <aws/core/auth/AWSCredentialsProvider.h>
#include <aws/core/client/ClientConfiguration.h>
#include <aws/core/client/DefaultRetryStrategy.h>
#include <aws/s3/S3ClientConfiguration.h>

#include <algorithm>
#include <array>
#include <stdexcept>

namespace replay {
namespace {

class CountingRetryStrategy : public Aws::Client::DefaultRetryStrategy {
public:
    CountingRetryStrategy(long maxRetries, long scaleFactor, std::shared_ptr<std::atomic<int>> attempts)
        : DefaultRetryStrategy(maxRetries, scaleFactor), attempts_(std::move(attempts)) {}

    void RequestBookkeeping(const Aws::Client::HttpResponseOutcome& outcome) override {
        DefaultRetryStrategy::RequestBookkeeping(outcome);
        ++*attempts_;
    }

    void RequestBookkeeping(const Aws::Client::HttpResponseOutcome& outcome,
                            const Aws::Client::AWSError<Aws::Client::CoreErrors>& lastError) override {
        DefaultRetryStrategy::RequestBookkeeping(outcome, lastError);
        ++*attempts_;
    }

private:
    std::shared_ptr<std::atomic<int>> attempts_;
};

struct Settings {
    Aws::Client::ClientConfiguration configuration;
    bool virtualAddressing = true;
    std::string accessKey = "AKIDEXAMPLE";
    std::string secretKey = "SECRETEXAMPLE";
    std::string token;
    bool ownRetryStrategy = true;
    long maxRetries = 1;
    long scaleFactor = 1;
};

struct Setting {
    const char* name;
    void (*apply)(Settings& settings, const Json& value, const Scene& scene);
};

Aws::Http::Scheme schemeNamed(const std::string& name) {
    return name == "https" ? Aws::Http::Scheme::HTTPS : Aws::Http::Scheme::HTTP;
}

Aws::Client::FollowRedirectsPolicy redirectsNamed(const std::string& name) {
    if (name == "DEFAULT") return Aws::Client::FollowRedirectsPolicy::DEFAULT;
    if (name == "ALWAYS") return Aws::Client::FollowRedirectsPolicy::ALWAYS;
    if (name == "NEVER") return Aws::Client::FollowRedirectsPolicy::NEVER;
    throw std::runtime_error("unknown redirect policy: " + name);
}

const std::array<Setting, 24> knownSettings{{
    {"endpoint",
     [](Settings& s, const Json& v, const Scene& scene) {
         s.configuration.endpointOverride = v.is_null() ? "" : scene.live(v);
     }},
    {"scheme", [](Settings& s, const Json& v, const Scene&) { s.configuration.scheme = schemeNamed(v); }},
    {"region",
     [](Settings& s, const Json& v, const Scene&) { s.configuration.region = v.get<std::string>(); }},
    {"token", [](Settings& s, const Json& v, const Scene&) { s.token = v; }},
    {"accessKey", [](Settings& s, const Json& v, const Scene&) { s.accessKey = v; }},
    {"secretKey", [](Settings& s, const Json& v, const Scene&) { s.secretKey = v; }},
    {"verifySSL", [](Settings& s, const Json& v, const Scene&) { s.configuration.verifySSL = v; }},
    {"caFile",
     [](Settings& s, const Json& v, const Scene& scene) { s.configuration.caFile = scene.live(v); }},
    {"caPath",
     [](Settings& s, const Json& v, const Scene& scene) { s.configuration.caPath = scene.live(v); }},
    {"requestTimeoutMs",
     [](Settings& s, const Json& v, const Scene&) { s.configuration.requestTimeoutMs = v; }},
    {"httpRequestTimeoutMs",
     [](Settings& s, const Json& v, const Scene&) { s.configuration.httpRequestTimeoutMs = v; }},
    {"connectTimeoutMs",
     [](Settings& s, const Json& v, const Scene&) { s.configuration.connectTimeoutMs = v; }},
    {"proxyScheme",
     [](Settings& s, const Json& v, const Scene&) { s.configuration.proxyScheme = schemeNamed(v); }},
    {"proxyHost",
     [](Settings& s, const Json& v, const Scene&) { s.configuration.proxyHost = v.get<std::string>(); }},
    {"proxyPort",
     [](Settings& s, const Json& v, const Scene& scene) { s.configuration.proxyPort = scene.livePort(v); }},
    {"proxyUserName",
     [](Settings& s, const Json& v, const Scene&) { s.configuration.proxyUserName = v.get<std::string>(); }},
    {"proxyPassword",
     [](Settings& s, const Json& v, const Scene&) { s.configuration.proxyPassword = v.get<std::string>(); }},
    {"userAgent",
     [](Settings& s, const Json& v, const Scene&) { s.configuration.userAgent = v.get<std::string>(); }},
    {"followRedirects",
     [](Settings& s, const Json& v, const Scene&) { s.configuration.followRedirects = redirectsNamed(v); }},
    {"disableExpectHeader",
     [](Settings& s, const Json& v, const Scene&) { s.configuration.disableExpectHeader = v; }},
    {"virtualAddressing", [](Settings& s, const Json& v, const Scene&) { s.virtualAddressing = v; }},
    {"maxRetries", [](Settings& s, const Json& v, const Scene&) { s.maxRetries = v; }},
    {"scaleFactor", [](Settings& s, const Json& v, const Scene&) { s.scaleFactor = v; }},
    {"retry", [](Settings& s, const Json& v, const Scene&) { s.ownRetryStrategy = v != "config"; }},
}};

void apply(const std::string& name, const Json& value, const Scene& scene, Settings& settings) {
    const auto* const known = std::find_if(knownSettings.begin(), knownSettings.end(),
                                           [&name](const Setting& setting) { return setting.name == name; });
    if (known == knownSettings.end()) throw std::runtime_error("unknown client setting: " + name);
    known->apply(settings, value, scene);
}

Settings usualSettings(const Scene& scene) {
    Settings settings;
    settings.configuration.endpointOverride = scene.server().endpoint();
    settings.configuration.scheme = Aws::Http::Scheme::HTTP;
    settings.configuration.region = "us-east-1";
    return settings;
}

}  // namespace

Client makeClient(const Json& settings, const Scene& scene) {
    Settings used = usualSettings(scene);
    for (const auto& [name, value] : settings.items())
        apply(name, value, scene, used);

    auto attempts = std::make_shared<std::atomic<int>>(0);
    if (used.ownRetryStrategy)
        used.configuration.retryStrategy =
            std::make_shared<CountingRetryStrategy>(used.maxRetries, used.scaleFactor, attempts);
    const Aws::S3::S3ClientConfiguration configuration(
        used.configuration, Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy::Never, used.virtualAddressing,
        Aws::S3::US_EAST_1_REGIONAL_ENDPOINT_OPTION::NOT_SET);
    const auto credentials =
        std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>(used.accessKey, used.secretKey, used.token);
    auto endpoints = std::make_shared<Aws::S3::Endpoint::S3EndpointProvider>();
    auto s3 = std::make_unique<Aws::S3::S3Client>(credentials, endpoints, configuration);
    return {std::move(attempts), std::move(endpoints), std::move(s3)};
}

}  // namespace replay
