#include <aws/core/Aws.h>
#include <gtest/gtest.h>

#include "support/process/Environment.hpp"

namespace {

// The SDK wants to be initialised before its first client is made, and shut down after the last is gone.
// Proxies and the metadata service of the machine are only for tests that switch them on.
class SdkEnvironment : public ::testing::Environment {
public:
    void SetUp() override { Aws::InitAPI(options_); }
    void TearDown() override { Aws::ShutdownAPI(options_); }

private:
    const testsupport::Environment variables_{
        {"AWS_EC2_METADATA_DISABLED", "true"},
        {"AWS_EC2_METADATA_SERVICE_ENDPOINT", testsupport::noMetadataService},
        {"ZR_AWS_PROXY", "OFF"}};
    Aws::SDKOptions options_;
};

const auto* const registered = ::testing::AddGlobalTestEnvironment(new SdkEnvironment);

}  // namespace
