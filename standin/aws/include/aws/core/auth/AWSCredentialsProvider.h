#pragma once

#include <aws/core/auth/AWSCredentials.h>
#include <aws/core/config/AWSProfileConfigLoader.h>
#include <aws/core/utils/threading/ReaderWriterLock.h>

#include <memory>
#include <utility>

namespace standin::aws {
class InstanceProfile;
}

namespace Aws::Auth {

/// How long providers keep what they loaded, in milliseconds.
constexpr int REFRESH_THRESHOLD = 1000 * 60 * 5;

/// AWS_CONFIG_FILE, else .aws/config in the home folder. Reads the environment.
Aws::String GetConfigProfileFilename();

/// AWS_DEFAULT_PROFILE, else AWS_PROFILE, else "default". Reads the environment.
Aws::String GetConfigProfileName();

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

/// AWS_ACCESS_KEY_ID, AWS_SECRET_ACCESS_KEY and AWS_SESSION_TOKEN, read for every call. Empty without the
/// first.
class EnvironmentAWSCredentialsProvider : public AWSCredentialsProvider {
public:
    AWSCredentials GetAWSCredentials() override;
};

/// A profile of the shared credentials file.
class ProfileConfigFileAWSCredentialsProvider : public AWSCredentialsProvider {
public:
    /// The profile and the file that the environment names now. Reads the file when first asked for
    /// credentials.
    explicit ProfileConfigFileAWSCredentialsProvider(long refreshRateMs = REFRESH_THRESHOLD);
    explicit ProfileConfigFileAWSCredentialsProvider(const char* profile,
                                                     long refreshRateMs = REFRESH_THRESHOLD);

    /// Reads the file again after the refresh period. Empty when file or profile are missing.
    AWSCredentials GetAWSCredentials() override;

    /// AWS_SHARED_CREDENTIALS_FILE, else .aws/credentials in the home folder. Reads the environment.
    static Aws::String GetCredentialsProfileFilename();

    /// The folder of GetCredentialsProfileFilename(), without a slash at its end.
    static Aws::String GetProfileDirectory();

protected:
    void Reload() override;

private:
    void refreshIfTime();

    Aws::String profile_;
    Aws::Config::AWSConfigFileProfileConfigLoader file_;
    long refreshRateMs_;
};

/// The role of the virtual machine, from the instance metadata service of Amazon EC2 (version 2, and 1 where
/// that is all there is; "Use the Instance Metadata Service to access instance metadata" in the EC2 user
/// guide).
class InstanceProfileCredentialsProvider : public AWSCredentialsProvider {
public:
    /// Asks nothing yet.
    explicit InstanceProfileCredentialsProvider(long refreshRateMs = REFRESH_THRESHOLD);
    ~InstanceProfileCredentialsProvider() override;

    /// Calls Reload() when there are no credentials, or the refresh period is over. Empty when the service
    /// doesn't answer, which takes a few seconds at most, or knows no role.
    AWSCredentials GetAWSCredentials() override;

protected:
    /// Asks the service.
    void Reload() override;

private:
    void refreshIfTime();

    std::unique_ptr<standin::aws::InstanceProfile> profile_;
    long refreshRateMs_;
};

}  // namespace Aws::Auth
