#include "ZRCredentialsProviderChain.hpp"

#include <atomic>
#include <fl/filesystem.hpp>
#include <fl/i18n.hpp>

namespace storage::s3provider {

using Aws::Auth::AWSCredentials;
using Aws::Auth::ProfileConfigFileAWSCredentialsProvider;
using Aws::Utils::Threading::ReaderLockGuard;

namespace {

constexpr long refreshPeriodMs = 300000;

/// The environment through the host, which knows its encoding. Read at every call.
class ZREnvCredentialsProvider : public Aws::Auth::AWSCredentialsProvider {
public:
    AWSCredentials GetAWSCredentials() override {
        const std::string accessKeyId = variable("AWS_ACCESS_KEY_ID");
        const std::string secretKey = variable("AWS_SECRET_ACCESS_KEY");
        return {accessKeyId, secretKey, variable("AWS_SESSION_TOKEN")};
    }

private:
    static std::string variable(const char* name) {
        return fl::i18n::ustring_to_utf8(fl::i18n::getenv(name));
    }
};

/// The metadata service of a cloud host. Most machines have none, and asking for it takes its time; so until
/// it answered once, it is left alone for a refresh period after each try.
class ZRInstanceProfileCredentialsProvider : public Aws::Auth::InstanceProfileCredentialsProvider {
public:
    ZRInstanceProfileCredentialsProvider() : InstanceProfileCredentialsProvider(refreshPeriodMs) {}

    AWSCredentials GetAWSCredentials() override {
        AWSCredentials credentials = InstanceProfileCredentialsProvider::GetAWSCredentials();
        if (!credentials.GetAWSAccessKeyId().empty()) m_neverSucceeded = false;
        return credentials;
    }

protected:
    void Reload() override {
        if (m_neverSucceeded && !IsTimeToRefresh(refreshPeriodMs)) return;
        InstanceProfileCredentialsProvider::Reload();
    }

private:
    std::atomic<bool> m_neverSucceeded{true};
};

boost::posix_time::ptime modificationTime(const std::string& file) {
    const std::u16string path = fl::i18n::to_ustring(file);
    if (path.empty()) return fl::filesystem::status({}).modificationTime;
    return fl::filesystem::status(fl::filesystem::detail::make_native_form(path, true)).modificationTime;
}

bool areComplete(const AWSCredentials& credentials) {
    return !credentials.GetAWSAccessKeyId().empty() && !credentials.GetAWSSecretKey().empty();
}

}  // namespace

ZRCredentialsProviderChain::ZRCredentialsProviderChain() {
    rebuildSources(Rebuild::Always);
}

AWSCredentials ZRCredentialsProviderChain::GetAWSCredentials() {
    rebuildSources(Rebuild::IfFileChanged);
    const ReaderLockGuard lock(m_reloadLock);
    for (const auto& provider : m_providers) {
        AWSCredentials credentials = provider->GetAWSCredentials();
        if (areComplete(credentials)) return credentials;
    }
    return {"", ""};
}

// Threads that find the file changed at the same time rebuild one after the other; each leaves all sources.
void ZRCredentialsProviderChain::rebuildSources(Rebuild when) {
    ReaderLockGuard lock(m_reloadLock);
    const std::string file = ProfileConfigFileAWSCredentialsProvider::GetCredentialsProfileFilename();
    const auto time = modificationTime(file);
    const bool unchanged = file == m_credentialsFile && time == m_credentialsFileTime;
    if (when == Rebuild::IfFileChanged && unchanged) return;

    lock.UpgradeToWriterLock();
    m_credentialsFile = file;
    m_credentialsFileTime = time;
    m_providers.clear();
    m_providers.push_back(std::make_shared<ZREnvCredentialsProvider>());
    m_providers.push_back(std::make_shared<Aws::Auth::EnvironmentAWSCredentialsProvider>());
    m_providers.push_back(std::make_shared<ProfileConfigFileAWSCredentialsProvider>(refreshPeriodMs));
    m_providers.push_back(std::make_shared<ZRInstanceProfileCredentialsProvider>());
}

}  // namespace storage::s3provider
