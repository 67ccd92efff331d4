#include <aws/core/auth/AWSCredentialsProvider.h>

#include "core/EnvironmentVariable.hpp"
#include "core/InstanceProfile.hpp"
#include "core/ProcessState.hpp"

namespace Aws::Auth {

using Aws::Utils::Threading::ReaderLockGuard;
using standin::aws::environmentVariable;

AWSCredentials EnvironmentAWSCredentialsProvider::GetAWSCredentials() {
    const std::string accessKeyId = environmentVariable("AWS_ACCESS_KEY_ID");
    if (accessKeyId.empty()) return {};
    return {accessKeyId, environmentVariable("AWS_SECRET_ACCESS_KEY"),
            environmentVariable("AWS_SESSION_TOKEN")};
}

ProfileConfigFileAWSCredentialsProvider::ProfileConfigFileAWSCredentialsProvider(long refreshRateMs)
    : ProfileConfigFileAWSCredentialsProvider(GetConfigProfileName().c_str(), refreshRateMs) {}

ProfileConfigFileAWSCredentialsProvider::ProfileConfigFileAWSCredentialsProvider(const char* profile,
                                                                                 long refreshRateMs)
    : profile_(profile), file_(GetCredentialsProfileFilename()), refreshRateMs_(refreshRateMs) {}

AWSCredentials ProfileConfigFileAWSCredentialsProvider::GetAWSCredentials() {
    refreshIfTime();
    const ReaderLockGuard guard(m_reloadLock);
    const auto found = file_.GetProfiles().find(profile_);
    return found != file_.GetProfiles().end() ? found->second.GetCredentials() : AWSCredentials();
}

void ProfileConfigFileAWSCredentialsProvider::refreshIfTime() {
    ReaderLockGuard guard(m_reloadLock);
    if (!IsTimeToRefresh(refreshRateMs_)) return;
    guard.UpgradeToWriterLock();
    if (IsTimeToRefresh(refreshRateMs_)) Reload();
}

void ProfileConfigFileAWSCredentialsProvider::Reload() {
    file_.Load();
    AWSCredentialsProvider::Reload();
}

InstanceProfileCredentialsProvider::InstanceProfileCredentialsProvider(long refreshRateMs)
    : profile_(std::make_unique<standin::aws::InstanceProfile>(standin::aws::metadataClient())),
      refreshRateMs_(refreshRateMs) {}

InstanceProfileCredentialsProvider::~InstanceProfileCredentialsProvider() = default;

AWSCredentials InstanceProfileCredentialsProvider::GetAWSCredentials() {
    refreshIfTime();
    const ReaderLockGuard guard(m_reloadLock);
    return profile_->credentials();
}

void InstanceProfileCredentialsProvider::refreshIfTime() {
    const auto isTime = [this] {
        return profile_->credentials().IsEmpty() || IsTimeToRefresh(refreshRateMs_);
    };
    ReaderLockGuard guard(m_reloadLock);
    if (!isTime()) return;
    guard.UpgradeToWriterLock();
    if (isTime()) Reload();
}

void InstanceProfileCredentialsProvider::Reload() {
    profile_->load();
    AWSCredentialsProvider::Reload();
}

}  // namespace Aws::Auth
