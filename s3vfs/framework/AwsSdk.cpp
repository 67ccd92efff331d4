#include "framework/AwsSdk.hpp"

#include <aws/core/Aws.h>

#include <atomic>
#include <storage/cloudprovider/keyCheck.hpp>

#include "framework/SentKeys.hpp"

namespace s3vfs {

namespace {

std::atomic<bool> initialised = false;

const Aws::SDKOptions& options() {
    static const Aws::SDKOptions defaults;
    return defaults;
}

}  // namespace

AwsSdk::AwsSdk() {
    Aws::InitAPI(options());
    initialised = true;
    storage::cloudprovider::useKeyCheck(&whyNotAddressable);
}

AwsSdk::~AwsSdk() {
    storage::cloudprovider::useKeyCheck({});
    shutDown();
}

void AwsSdk::shutDown() {
    if (initialised.exchange(false)) Aws::ShutdownAPI(options());
}

}  // namespace s3vfs
