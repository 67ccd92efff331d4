#pragma once

#include <aws/core/auth/AWSCredentialsProvider.h>

#include <array>
#include <memory>

namespace storage::s3provider {

/// One source of credentials.
enum class CredentialsPlace { HostEnvironment, SdkEnvironment, ProfileFile, MetadataService };

struct CredentialsSource {
    CredentialsPlace place;
    /// A new source, which asks nothing yet.
    std::shared_ptr<Aws::Auth::AWSCredentialsProvider> (*make)();
};

/// The sources of the credentials chain, in the order of asking.
extern const std::array<CredentialsSource, 4> credentialsSources;

/// Whether there is an access key as well as a secret; the chain passes over what is not.
bool areComplete(const Aws::Auth::AWSCredentials& credentials);

}  // namespace storage::s3provider
