#pragma once

#include <aws/core/auth/AWSCredentials.h>
#include <aws/core/client/ClientConfiguration.h>
#include <aws/s3/S3ServiceClientModel.h>

#include <string>

#include "explain/Section.hpp"

/// Each topic tells how the plug-in comes to its answer, by asking the plug-in's own functions and tables.
namespace s3vfs::explain {

/// What is asked only once, since it may take a while or cost a request.
struct Answers {
    Aws::Client::ClientConfiguration configuration;     ///< as the plug-in makes it
    Aws::Auth::AWSCredentials credentials;              ///< the first complete ones; empty without any
    Aws::S3::Model::GetBucketLocationOutcome location;  ///< where S3 says that the bucket is
};

/// The region for which the plug-in signs the bucket's requests.
std::string signingRegion(const Answers& answers);

/// A bucket's location as the region that it means: empty is us-east-1, "EU" is eu-west-1.
std::string regionOfLocation(const std::string& location);

Section explainRegion(const Answers& answers);

struct CredentialsSection {
    Section section;
    Aws::Auth::AWSCredentials credentials;  ///< the first complete ones; empty without any
    bool usable;                            ///< whether the plug-in can make its chain at all
};

/// Asks each source once, and the metadata service only when no other source has credentials.
CredentialsSection explainCredentials();

Section explainProxy(const Aws::Client::ClientConfiguration& configuration);
Section explainCertificates(const Aws::Client::ClientConfiguration& configuration);
Section explainRetries(const Aws::Client::ClientConfiguration& configuration);
Section explainEndpoint();
Section explainBucket(const Answers& answers);

}  // namespace s3vfs::explain
