#pragma once

#include <aws/core/auth/AWSCredentials.h>
#include <aws/core/utils/threading/ReaderWriterLock.h>

#include <utility>

namespace Aws::Auth {

/// A source of credentials. Asked by clients for every request they sign, from any thread.
class AWSCredentialsProvider {
public:
    virtual ~AWSCredentialsProvider() = default;

    /// Empty credentials when the source has none.
    virtual AWSCredentials GetAWSCredentials() = 0;

protected:
    /// Whether `reloadFrequencyMs` have gone by since the last Reload(). True before the first.
    virtual bool IsTimeToRefresh(long reloadFrequencyMs);

    /// Called with m_reloadLock held as writer; remembers the time of the reload.
    virtual void Reload();

    mutable Aws::Utils::Threading::ReaderWriterLock m_reloadLock;

private:
    long long lastLoadedMs_ = 0;
};

/// The same credentials always.
class SimpleAWSCredentialsProvider : public AWSCredentialsProvider {
public:
    SimpleAWSCredentialsProvider(const Aws::String& accessKeyId, const Aws::String& secretKey,
                                 const Aws::String& sessionToken = {})
        : credentials_(accessKeyId, secretKey, sessionToken) {}
    explicit SimpleAWSCredentialsProvider(AWSCredentials credentials)
        : credentials_(std::move(credentials)) {}

    AWSCredentials GetAWSCredentials() override { return credentials_; }

private:
    AWSCredentials credentials_;
};

/// Requests go out unsigned.
class AnonymousAWSCredentialsProvider : public AWSCredentialsProvider {
public:
    AWSCredentials GetAWSCredentials() override { return {}; }
};

}  // namespace Aws::Auth
