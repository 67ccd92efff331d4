#include "AwsSdk.hpp"

#include <aws/core/Aws.h>

namespace s3vfs {

namespace {

const Aws::SDKOptions& options() {
    static const Aws::SDKOptions defaults;
    return defaults;
}

}  // namespace

AwsSdk::AwsSdk() {
    Aws::InitAPI(options());
}

AwsSdk::~AwsSdk() {
    Aws::ShutdownAPI(options());
}

}  // namespace s3vfs
