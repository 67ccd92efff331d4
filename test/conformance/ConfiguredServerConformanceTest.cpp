#include <gtest/gtest.h>

#include <memory>

#include "conformance/CloudClientConformance.hpp"
#include "conformance/targets/ConfiguredTarget.hpp"

using namespace testsupport;

namespace {

class ConfiguredServer : public ::testing::Environment {
public:
    void SetUp() override {
        if (!ConfiguredTarget::isConfigured())
            GTEST_SKIP() << "S3PROVIDER_TEST_ENDPOINT isn't set; docs/integration.md tells what to set";
    }
};

const auto* const registered = ::testing::AddGlobalTestEnvironment(new ConfiguredServer);

}  // namespace

INSTANTIATE_TEST_SUITE_P(ConfiguredServer, CloudClientConformance,
                         ::testing::Values(TargetChoice{"ByEnvironment",
                                                        [] { return std::make_unique<ConfiguredTarget>(); }}),
                         [](const auto& choice) { return choice.param.name; });
