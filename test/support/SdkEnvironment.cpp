#include <aws/core/Aws.h>
#include <gtest/gtest.h>

namespace {

// The SDK wants to be initialised before its first client is made, and shut down after the last is gone.
class SdkEnvironment : public ::testing::Environment {
public:
    void SetUp() override { Aws::InitAPI(options_); }
    void TearDown() override { Aws::ShutdownAPI(options_); }

private:
    Aws::SDKOptions options_;
};

const auto* const registered = ::testing::AddGlobalTestEnvironment(new SdkEnvironment);

}  // namespace
