#pragma once

#include <aws/core/auth/AWSCredentials.h>

#include <memory>
#include <utility>

#include "core/MetadataClient.hpp"

namespace standin::aws {

/// The credentials of the machine's role. For one thread at a time.
class InstanceProfile {
public:
    /// Asks nothing yet.
    explicit InstanceProfile(std::shared_ptr<MetadataClient> metadata) : metadata_(std::move(metadata)) {}

    /// Asks the service. Without a usable answer what was known stays. Expired credentials aren't taken: the
    /// service is in trouble then, and left alone for some minutes.
    void load();

    /// Never said to expire: when they are to be asked for again is the refresh period's matter.
    const Aws::Auth::AWSCredentials& credentials() const { return credentials_; }

private:
    std::shared_ptr<MetadataClient> metadata_;
    Aws::Auth::AWSCredentials credentials_;
    Aws::Utils::DateTime leftAloneUntil_;
};

}  // namespace standin::aws
