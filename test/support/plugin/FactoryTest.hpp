#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "support/plugin/LogCapture.hpp"
#include "support/process/CleanEnvironment.hpp"
#include "support/process/Environment.hpp"

namespace testsupport {

/// An environment in which nothing is set that chooses a region, credentials, a proxy or certificates: an
/// empty home, no AWS or ZR variable, no metadata service, proxies off.
class FactoryTest : public ::testing::Test {
protected:
    FactoryTest() { environment.set("ZR_AWS_PROXY", "OFF"); }

    /// What fails does so at once: a request is tried once, and a download again without a pause.
    void tryOnce() {
        environment.set("AWS_RETRY_MODE", "standard");
        environment.set("AWS_MAX_ATTEMPTS", "1");
        environment.set("ZR_AWS_RETRYTIMEMS", "0");
    }

    /// Writes a file below the home folder.
    std::filesystem::path write(const std::string& name, const std::string& content) const {
        return home.write(name, content);
    }

    const CleanEnvironment clean;
    const TemporaryFolder& home = clean.home();
    Environment environment;
    LogCapture log{factoryChannel};
};

}  // namespace testsupport
