#pragma once

#include "explain/Answers.hpp"
#include "explain/Section.hpp"

/// Each topic tells how the plug-in comes to its answer, by asking the plug-in's own functions and tables.
namespace s3vfs::explain {

Section explainRegion(const Answers& answers);

struct CredentialsSection {
    Section section;
    Aws::Auth::AWSCredentials credentials;  ///< the first complete ones; empty without any
    bool usable;                            ///< whether the plug-in can make its chain at all
};

/// Asks each source once, and the metadata service only when no other source has credentials.
CredentialsSection explainCredentials();

Section explainProxy(const Answers& answers);
Section explainCertificates(const Aws::Client::ClientConfiguration& configuration);
Section explainRetries(const Aws::Client::ClientConfiguration& configuration);
Section explainEndpoint(const Aws::Client::ClientConfiguration& configuration);
Section explainBucket(const Answers& answers);

}  // namespace s3vfs::explain
