#include "AwsSdk.hpp"

#include <aws/core/Aws.h>

#include <atomic>

namespace s3vfs {

namespace {

std::atomic<bool> initialised = false;

const Aws::SDKOptions& options() {
    static const Aws::SDKOptions defaults;
    return defaults;
}

/// Once, whichever threads come here.
void shutDown() {
    if (initialised.exchange(false)) Aws::ShutdownAPI(options());
}

}  // namespace

AwsSdk::AwsSdk() {
    Aws::InitAPI(options());
    initialised = true;
}

AwsSdk::~AwsSdk() {
    shutDown();
}

void AwsSdk::shutDownEarly() {
    shutDown();
}

}  // namespace s3vfs
