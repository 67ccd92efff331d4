#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/CleanEnvironment.hpp"
#include "support/Environment.hpp"
#include "support/LogCapture.hpp"

namespace testsupport {

constexpr const char* factoryChannel = "storage::s3provider::AwsS3ClientFactory";

/// An environment in which nothing is set that chooses a region, credentials, a proxy or certificates: an
/// empty home, no AWS or ZR variable, no metadata service, proxies off.
class FactoryTest : public ::testing::Test {
protected:
    FactoryTest() {
        environment.unset("XDG_CONFIG_HOME");
        environment.unset("S3VFS_SETTINGS");
        environment.set("ZR_AWS_PROXY", "OFF");
    }

    /// Writes a file below the home folder.
    std::filesystem::path write(const std::string& name, const std::string& content) const {
        const auto file = home.path() / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file;
    }

    const CleanEnvironment clean;
    const TemporaryFolder& home = clean.home();
    Environment environment;
    LogCapture log{factoryChannel};
};

}  // namespace testsupport
