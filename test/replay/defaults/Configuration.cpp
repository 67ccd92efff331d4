#include "replay/Wire.hpp"
#include "replay/defaults/Descriptions.hpp"
#include "replay/defaults/Observers.hpp"
#include "replay/defaults/Setting.hpp"

#include <aws/core/client/CoreErrors.h>
#include <aws/core/client/DefaultRetryStrategy.h>
#include <aws/s3/S3EndpointProvider.h>

namespace replay {
namespace {

using Aws::Client::AWSError;
using Aws::Client::ClientConfiguration;
using Aws::Client::CoreErrors;
using Aws::Client::DefaultRetryStrategy;
using Aws::Client::RetryStrategy;

const AWSError<CoreErrors> passingError(CoreErrors::NETWORK_CONNECTION, true);
const AWSError<CoreErrors> lastingError(CoreErrors::ACCESS_DENIED, false);

std::string schemeName(Aws::Http::Scheme scheme) {
    return scheme == Aws::Http::Scheme::HTTPS ? "HTTPS" : "HTTP";
}

/// Numbers of retries that were asked for.
constexpr long recordedRetries[] = {0, 1, 2, 5, 9, 10, 20, 30, 31, 32};

/// Of each number, whether that many are followed by one more, and after how many milliseconds.
Json retriesBy(const RetryStrategy& strategy) {
    Json rows = Json::array();
    for (const long retries : recordedRetries)
        rows.push_back({retries, strategy.ShouldRetry(passingError, retries),
                        strategy.CalculateDelayBeforeNextRetry(passingError, retries)});
    return rows;
}

}  // namespace

Json describe(const ClientConfiguration& configuration) {
    return {{"region", configuration.region},
            {"scheme", schemeName(configuration.scheme)},
            {"endpointOverride", configuration.endpointOverride},
            {"useDualStack", configuration.useDualStack},
            {"useFIPS", configuration.useFIPS},
            {"maxConnections", configuration.maxConnections},
            {"httpRequestTimeoutMs", configuration.httpRequestTimeoutMs},
            {"requestTimeoutMs", configuration.requestTimeoutMs},
            {"connectTimeoutMs", configuration.connectTimeoutMs},
            {"enableTcpKeepAlive", configuration.enableTcpKeepAlive},
            {"tcpKeepAliveIntervalMs", configuration.tcpKeepAliveIntervalMs},
            {"lowSpeedLimit", configuration.lowSpeedLimit},
            {"retryStrategyName", configuration.retryStrategy->GetStrategyName()},
            {"retryMaxAttempts", configuration.retryStrategy->GetMaxAttempts()},
            {"retries", retriesBy(*configuration.retryStrategy)},
            {"allowSystemProxy", configuration.allowSystemProxy},
            {"proxyScheme", schemeName(configuration.proxyScheme)},
            {"proxyHost", configuration.proxyHost},
            {"proxyPort", configuration.proxyPort},
            {"proxyUserName", configuration.proxyUserName},
            {"proxyPassword", configuration.proxyPassword},
            {"verifySSL", configuration.verifySSL},
            {"caPath", configuration.caPath},
            {"caFile", configuration.caFile},
            {"followRedirects", static_cast<int>(configuration.followRedirects)},
            {"disableExpectHeader", configuration.disableExpectHeader},
            {"enableClockSkewAdjustment", configuration.enableClockSkewAdjustment},
            {"profileName", configuration.profileName},
            {"disableIMDS", configuration.disableIMDS},
            {"userAgent", configuration.userAgent},
            {"computed_user_agent", withPlaceholders(Aws::Client::ComputeUserAgentString(&configuration))}};
}

Json only(const Json& wanted, const Json& all) {
    Json some = Json::object();
    for (const auto& [name, value] : wanted.items())
        if (all.contains(name)) some[name] = all[name];
    return some;
}

namespace {

Json describe(const Aws::S3::S3ClientConfiguration& configuration) {
    return {{"useVirtualAddressing", configuration.useVirtualAddressing},
            {"useUSEast1RegionalEndPointOption",
             static_cast<int>(configuration.useUSEast1RegionalEndPointOption)},
            {"payloadSigningPolicy", static_cast<int>(configuration.payloadSigningPolicy)},
            {"region", configuration.region}};
}

std::string endpointOf(const Aws::S3::S3ClientConfiguration& configuration, const std::string& bucket) {
    Aws::S3::Endpoint::S3EndpointProvider endpoints;
    endpoints.InitBuiltInParameters(configuration);
    const auto endpoint =
        endpoints.ResolveEndpoint({Aws::Endpoint::EndpointParameter("Bucket", Aws::String(bucket))});
    return endpoint.IsSuccess() ? endpoint.GetResult().GetURL() : endpoint.GetError().GetMessage();
}

Json delays(const RetryStrategy& strategy) {
    Json delays = Json::array();
    for (long retries = 0; retries < 12; ++retries)
        delays.push_back(strategy.CalculateDelayBeforeNextRetry(passingError, retries));
    return delays;
}

long allowedRetries(const RetryStrategy& strategy) {
    long retries = 0;
    while (strategy.ShouldRetry(passingError, retries))
        ++retries;
    return retries;
}

}  // namespace

Json observeClientConfiguration(const Json& recorded) {
    const Setting setting(recorded);
    const ClientConfiguration configuration;
    const Aws::S3::S3ClientConfiguration s3(configuration,
                                            Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy::Never, true,
                                            Aws::S3::US_EAST_1_REGIONAL_ENDPOINT_OPTION::NOT_SET);
    Json seen = describe(configuration);
    seen["s3"] = describe(s3);
    seen["endpoint_for_plain_bucket"] = endpointOf(s3, "plain-bucket");
    return only(recorded["observed"], seen);
}

Json observeRetryStrategies(const Json& recorded) {
    const Setting setting(recorded);
    const auto configured = ClientConfiguration().retryStrategy;
    const DefaultRetryStrategy usual;
    const DefaultRetryStrategy once(1, 1);
    const Json seen{{"default_delays_ms", delays(usual)},
                    {"default_retries_allowed", allowedRetries(usual)},
                    {"default_retries_a_non_retryable", usual.ShouldRetry(lastingError, 0)},
                    {"default_max_attempts", usual.GetMaxAttempts()},
                    {"(1,1)_delay_before_first", once.CalculateDelayBeforeNextRetry(passingError, 0)},
                    {"(1,1)_first", once.ShouldRetry(passingError, 0)},
                    {"(1,1)_second", once.ShouldRetry(passingError, 1)},
                    {"(1,1)_max_attempts", once.GetMaxAttempts()},
                    {"configured_name", configured->GetStrategyName()},
                    {"configured_max_attempts", configured->GetMaxAttempts()},
                    {"configured_retries_allowed", allowedRetries(*configured)}};
    return only(recorded["observed"], seen);
}

}  // namespace replay
