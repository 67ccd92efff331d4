#pragma once

#include <foundation/thirdpartylibmgmt/Initializer.hpp>

namespace s3vfs {

/// Keeps the AWS SDK initialised while it lives. One at a time in a process.
class AwsSdk : public foundation::thirdpartylibmgmt::Initializer {
public:
    AwsSdk();

    /// Shuts the SDK down. What it made must be gone by then.
    ~AwsSdk() override;
};

}  // namespace s3vfs
