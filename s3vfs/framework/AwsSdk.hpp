#pragma once

#include <foundation/thirdpartylibmgmt/Initializer.hpp>

namespace s3vfs {

/// Keeps the AWS SDK initialised while it lives, and providers from handing it keys that it would send as
/// others. One at a time in a process.
class AwsSdk : public foundation::thirdpartylibmgmt::Initializer {
public:
    AwsSdk();

    /// Shuts the SDK down, unless that is done. What it made must be gone by then.
    ~AwsSdk() override;

    /// Shuts down the SDK that some object keeps, if any, although requests may be under way. Nothing but the
    /// process's end may follow. Once, whichever threads call it.
    static void shutDown();
};

}  // namespace s3vfs
