#include "CredentialsSources.hpp"

#include <atomic>
#include <fl/i18n.hpp>

namespace storage::s3provider {

using Aws::Auth::AWSCredentials;
using Aws::Auth::AWSCredentialsProvider;

namespace {

constexpr long refreshPeriodMs = 300000;

/// The environment through the host, which knows its encoding. Read at every call.
class ZREnvCredentialsProvider : public AWSCredentialsProvider {
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

template <class Provider>
std::shared_ptr<AWSCredentialsProvider> make() {
    return std::make_shared<Provider>();
}

std::shared_ptr<AWSCredentialsProvider> makeProfileFile() {
    return std::make_shared<Aws::Auth::ProfileConfigFileAWSCredentialsProvider>(refreshPeriodMs);
}

}  // namespace

const std::array<CredentialsSource, 4> credentialsSources{{
    {CredentialsPlace::HostEnvironment, &make<ZREnvCredentialsProvider>},
    {CredentialsPlace::SdkEnvironment, &make<Aws::Auth::EnvironmentAWSCredentialsProvider>},
    {CredentialsPlace::ProfileFile, &makeProfileFile},
    {CredentialsPlace::MetadataService, &make<ZRInstanceProfileCredentialsProvider>},
}};

bool areComplete(const AWSCredentials& credentials) {
    return !credentials.GetAWSAccessKeyId().empty() && !credentials.GetAWSSecretKey().empty();
}

}  // namespace storage::s3provider
