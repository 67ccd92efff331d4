#include "ZRCredentialsProviderChain.hpp"

#include <fl/filesystem.hpp>
#include <fl/i18n.hpp>

#include "CredentialsSources.hpp"

namespace storage::s3provider {

using Aws::Auth::AWSCredentials;
using Aws::Auth::ProfileConfigFileAWSCredentialsProvider;
using Aws::Utils::Threading::ReaderLockGuard;

namespace {

boost::posix_time::ptime modificationTime(const std::string& file) {
    const std::u16string path = fl::i18n::to_ustring(file);
    if (path.empty()) return fl::filesystem::status({}).modificationTime;
    return fl::filesystem::status(fl::filesystem::detail::make_native_form(path, true)).modificationTime;
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
    for (const CredentialsSource& source : credentialsSources)
        m_providers.push_back(source.make());
}

}  // namespace storage::s3provider
