#pragma once

#include <aws/core/client/RetryStrategy.h>
#include <aws/core/http/Scheme.h>
#include <aws/core/utils/memory/stl/AWSString.h>

#include <memory>

namespace Aws::Client {

/// Whether the HTTP layer follows redirects by itself. DEFAULT follows them, save in region "aws-global".
enum class FollowRedirectsPolicy { DEFAULT, ALWAYS, NEVER };

/// How a client reaches its service. A client copies what it is given, so changes come too late for it.
struct ClientConfiguration {
    /// The values below, and those that the environment and the config file set for the profile that
    /// Aws::Auth::GetConfigProfileName() names. The file is read by InitAPI(), once.
    ///
    /// The region is AWS_DEFAULT_REGION, AWS_REGION, the profile's `region`, the machine's own, or
    /// "us-east-1": the first that is there. Only a machine in Amazon EC2 knows its own; asking elsewhere
    /// takes some seconds if nothing answers. AWS_EC2_METADATA_DISABLED=true avoids it.
    ClientConfiguration();

    /// The same by the name of a profile, and without asking the machine.
    explicit ClientConfiguration(const char* profile, bool shouldDisableIMDS = false);

    Aws::String userAgent;  ///< empty: the SDK's own; the service's part follows either
    Aws::Http::Scheme scheme = Aws::Http::Scheme::HTTPS;
    Aws::String region;
    Aws::String profileName;       ///< for credentials providers; the client itself reads no profile
    Aws::String endpointOverride;  ///< host, host:port or a URL; empty: the service's own endpoint
    bool useDualStack = false;
    bool useFIPS = false;

    unsigned maxConnections = 25;   ///< a thread that finds them all in use waits for one
    long httpRequestTimeoutMs = 0;  ///< for the whole request; 0: none
    long requestTimeoutMs = 3000;   ///< of silence; whole seconds count, at least one; 0: none
    long connectTimeoutMs = 1000;
    unsigned long lowSpeedLimit = 1;  ///< bytes a second below which it is silence
    bool enableTcpKeepAlive = true;
    unsigned long tcpKeepAliveIntervalMs = 30000;

    /// By AWS_RETRY_MODE or the profile's `retry_mode`, and AWS_MAX_ATTEMPTS or `max_attempts`.
    std::shared_ptr<RetryStrategy> retryStrategy;

    bool allowSystemProxy = false;  ///< without proxyHost: whether http_proxy and its like are honoured
    Aws::Http::Scheme proxyScheme = Aws::Http::Scheme::HTTP;
    Aws::String proxyHost;  ///< empty: no proxy
    unsigned proxyPort = 0;
    Aws::String proxyUserName;
    Aws::String proxyPassword;
    Aws::String proxyCaPath;  ///< folder of certificates trusted of an HTTPS proxy; empty: libcurl's
    Aws::String proxyCaFile;  ///< file of certificates trusted of an HTTPS proxy; empty: libcurl's

    bool verifySSL = true;
    Aws::String caPath;  ///< folder of trusted certificates; empty: libcurl's
    Aws::String caFile;  ///< file of trusted certificates; empty: libcurl's

    FollowRedirectsPolicy followRedirects = FollowRedirectsPolicy::DEFAULT;
    bool disableExpectHeader = false;
    bool enableClockSkewAdjustment = true;  ///< corrects the signing time by the service's clock
    bool disableIMDS = false;               ///< whether the machine wasn't to be asked
};

/// What a client says of itself, up to the service's part; null stands for the default retry mode. Ends with
/// AWS_EXECUTION_ENV, and the application's id by AWS_SDK_UA_APP_ID or the profile's `sdk_ua_app_id`, where
/// these are set; in both, a character that would end the word is replaced by "_".
Aws::String ComputeUserAgentString(const ClientConfiguration* configuration = nullptr);

}  // namespace Aws::Client
