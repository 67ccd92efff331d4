#include "core/ConnectionOptions.hpp"

#include <algorithm>

namespace standin::aws {
namespace {

using Aws::Client::ClientConfiguration;

/// In bytes. Larger than libcurl's own, for fewer calls a transfer.
constexpr long bufferSize = 131072;

/// libcurl counts silence in whole seconds.
long silenceSeconds(long milliseconds) {
    return milliseconds <= 0 ? 0 : std::max(1L, milliseconds / 1000);
}

void setTimeouts(CURL* handle, const ClientConfiguration& configuration) {
    setOption(handle, CURLOPT_NOSIGNAL, 1L);
    setOption(handle, CURLOPT_TIMEOUT_MS, std::max(0L, configuration.httpRequestTimeoutMs));
    setOption(handle, CURLOPT_CONNECTTIMEOUT_MS, std::max(0L, configuration.connectTimeoutMs));
    setOption(handle, CURLOPT_LOW_SPEED_LIMIT, static_cast<long>(configuration.lowSpeedLimit));
    setOption(handle, CURLOPT_LOW_SPEED_TIME, silenceSeconds(configuration.requestTimeoutMs));
    if (!configuration.enableTcpKeepAlive) return;
    const auto interval = static_cast<long>(configuration.tcpKeepAliveIntervalMs / 1000);
    setOption(handle, CURLOPT_TCP_KEEPALIVE, 1L);
    setOption(handle, CURLOPT_TCP_KEEPIDLE, interval);
    setOption(handle, CURLOPT_TCP_KEEPINTVL, interval);
}

void setTrust(CURL* handle, const ClientConfiguration& configuration) {
    setOption(handle, CURLOPT_SSL_VERIFYPEER, configuration.verifySSL ? 1L : 0L);
    setOption(handle, CURLOPT_SSL_VERIFYHOST, configuration.verifySSL ? 2L : 0L);
    if (!configuration.caPath.empty()) setOption(handle, CURLOPT_CAPATH, configuration.caPath.c_str());
    if (!configuration.caFile.empty()) setOption(handle, CURLOPT_CAINFO, configuration.caFile.c_str());
}

/// A proxy is always verified.
void setProxyTrust(CURL* handle, const ClientConfiguration& configuration) {
    if (!configuration.proxyCaPath.empty())
        setOption(handle, CURLOPT_PROXY_CAPATH, configuration.proxyCaPath.c_str());
    if (!configuration.proxyCaFile.empty())
        setOption(handle, CURLOPT_PROXY_CAINFO, configuration.proxyCaFile.c_str());
}

void setProxy(CURL* handle, const ClientConfiguration& configuration) {
    if (configuration.proxyHost.empty()) {
        // An empty name keeps libcurl from asking the environment for one.
        if (!configuration.allowSystemProxy) setOption(handle, CURLOPT_PROXY, "");
        return;
    }
    const bool tls = configuration.proxyScheme == Aws::Http::Scheme::HTTPS;
    const std::string url = std::string(Aws::Http::SchemeMapper::ToString(configuration.proxyScheme)) +
                            "://" + configuration.proxyHost;
    setOption(handle, CURLOPT_PROXY, url.c_str());
    // An empty list keeps libcurl from asking the environment which hosts need none.
    setOption(handle, CURLOPT_NOPROXY, "");
    setOption(handle, CURLOPT_PROXYPORT, static_cast<long>(configuration.proxyPort));
    if (tls) setProxyTrust(handle, configuration);
    if (configuration.proxyUserName.empty() && configuration.proxyPassword.empty()) return;
    setOption(handle, CURLOPT_PROXYUSERNAME, configuration.proxyUserName.c_str());
    setOption(handle, CURLOPT_PROXYPASSWORD, configuration.proxyPassword.c_str());
}

}  // namespace

void setFixedOptions(CURL* handle, const ClientConfiguration& configuration) {
    setOption(handle, CURLOPT_PROTOCOLS_STR, "http,https");
    setOption(handle, CURLOPT_PATH_AS_IS, 1L);
    setOption(handle, CURLOPT_FOLLOWLOCATION, 0L);
    setOption(handle, CURLOPT_BUFFERSIZE, bufferSize);
    setOption(handle, CURLOPT_UPLOAD_BUFFERSIZE, bufferSize);
    setTimeouts(handle, configuration);
    setTrust(handle, configuration);
    setProxy(handle, configuration);
}

}  // namespace standin::aws
