#include <gtest/gtest.h>

#include <iostream>
#include <memory>
#include <stdexcept>
#include <vector>

#include "conformance/CloudClientConformance.hpp"
#include "integration/Gateway.hpp"

using namespace testsupport;

namespace {

/// One gateway for the program's run. Where it isn't installed, every test is skipped.
class GatewayEnvironment : public ::testing::Environment {
public:
    static std::unique_ptr<Gateway> gateway;

    void SetUp() override {
        if (const auto missing = Gateway::missingProgram(); !missing.empty())
            GTEST_SKIP() << missing << " isn't installed; tools/install-deps integration installs it";
        gateway = started();
    }

    void TearDown() override { gateway.reset(); }

private:
    // Between choosing a port and using it, another process may take it.
    static std::unique_ptr<Gateway> started(unsigned attempts = 3) {
        try {
            return std::make_unique<Gateway>();
        } catch (const std::runtime_error& failure) {
            if (attempts == 1) throw;
            std::cerr << "once more: " << failure.what() << '\n';
            return started(attempts - 1);
        }
    }
};

std::unique_ptr<Gateway> GatewayEnvironment::gateway;
const auto* const registered = ::testing::AddGlobalTestEnvironment(new GatewayEnvironment);

/// A bucket of its own on that gateway.
class GatewayTarget : public Target {
public:
    explicit GatewayTarget(Way way) : access_(GatewayEnvironment::gateway->accessToNewBucket(way)) {}

    Access access() const override { return access_; }
    Quirks quirks() const override {
        return {Quirk::DecodesCopySourcesTwice, Quirk::SortsPartsOfCompletions};
    }

private:
    Access access_;
};

std::vector<TargetChoice> gateways() {
    std::vector<TargetChoice> choices;
    for (const auto way : everyWay)
        choices.push_back({nameOf(way), [way] { return std::make_unique<GatewayTarget>(way); }});
    return choices;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Gateway, CloudClientConformance, ::testing::ValuesIn(gateways()),
                         [](const auto& choice) { return choice.param.name; });
