#pragma once

#include <aws/core/auth/AWSCredentialsProvider.h>

#include <boost/date_time/posix_time/ptime.hpp>
#include <memory>
#include <string>
#include <vector>

namespace storage::s3provider {

/// Credentials of the first source that has an access key and a secret: the environment as the host reads it,
/// the environment as the SDK reads it, the shared credentials file, and the instance-metadata service, which
/// is asked once in 300000 ms at most while it never had any. Empty credentials when none has them.
///
/// The sources keep what they found; they are made anew when the credentials file gets another name or
/// another modification time. Any thread. Throws what the host's environment, text and file functions throw.
class ZRCredentialsProviderChain : public Aws::Auth::AWSCredentialsProvider {
public:
    ZRCredentialsProviderChain();

    Aws::Auth::AWSCredentials GetAWSCredentials() override;

private:
    enum class Rebuild { IfFileChanged, Always };
    void rebuildSources(Rebuild when);

    // All guarded by m_reloadLock.
    std::vector<std::shared_ptr<Aws::Auth::AWSCredentialsProvider>> m_providers;
    std::string m_credentialsFile;
    boost::posix_time::ptime m_credentialsFileTime;
};

}  // namespace storage::s3provider
