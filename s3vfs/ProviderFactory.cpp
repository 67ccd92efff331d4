#include "ProviderFactory.hpp"

#include <aws/core/Aws.h>

#include <foundation/thirdpartylibmgmt/Initializer.hpp>

#include "S3ProviderFactoryV2.hpp"

namespace s3vfs {

namespace {

class AwsSdk : public foundation::thirdpartylibmgmt::Initializer {
public:
    AwsSdk() { Aws::InitAPI(options_); }
    ~AwsSdk() override { Aws::ShutdownAPI(options_); }
    AwsSdk(const AwsSdk&) = delete;
    AwsSdk& operator=(const AwsSdk&) = delete;

private:
    Aws::SDKOptions options_;
};

}  // namespace

std::shared_ptr<foundation::storage::provider::PhysicalProviderFactory> makeProviderFactory() {
    return std::make_shared<storage::s3provider::S3ProviderFactoryV2>(std::make_shared<AwsSdk>());
}

}  // namespace s3vfs
