#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "support/Environment.hpp"
#include "support/LogCapture.hpp"
#include "support/TemporaryFolder.hpp"

namespace testsupport {

constexpr const char* factoryChannel = "storage::s3provider::AwsS3ClientFactory";

/// An environment in which nothing is set that chooses a region, credentials, a proxy or certificates: an
/// empty home, no AWS or ZR variable, no metadata service, proxies off.
class FactoryTest : public ::testing::Test {
protected:
    FactoryTest() {
        for (const char* const name : {"AWS_DEFAULT_REGION",
                                       "AWS_REGION",
                                       "AWS_PROFILE",
                                       "AWS_DEFAULT_PROFILE",
                                       "AWS_ACCESS_KEY_ID",
                                       "AWS_SECRET_ACCESS_KEY",
                                       "AWS_SESSION_TOKEN",
                                       "AWS_SHARED_CREDENTIALS_FILE",
                                       "AWS_CONFIG_FILE",
                                       "ZR_AWS_SCHEME",
                                       "ZR_ROOT_CERT_PATH",
                                       "ZR_ROOT_CERT_FILE",
                                       "ZR_AWS_GETDATA_ATTEMPTS",
                                       "ZR_AWS_RETRYTIMEMS",
                                       "ZR_AWS_ENDPOINT_OVERRIDE",
                                       "ZR_AWS_GETLOCATION_REGION",
                                       "ZR_PROXY_HOST",
                                       "ZR_PROXY_PORT",
                                       "ZR_PROXY_USERNAME",
                                       "ZR_PROXY_PASSWORD",
                                       "http_proxy",
                                       "https_proxy",
                                       "HTTP_PROXY",
                                       "HTTPS_PROXY",
                                       "all_proxy",
                                       "ALL_PROXY",
                                       "no_proxy",
                                       "NO_PROXY"})
            environment.unset(name);
        environment.set("HOME", home.path().string());
        environment.set("XDG_CONFIG_HOME", (home.path() / ".config").string());
        environment.unset("S3VFS_SETTINGS");
        environment.set("ZR_AWS_PROXY", "OFF");
        environment.set("AWS_EC2_METADATA_DISABLED", "true");
        environment.set("AWS_EC2_METADATA_SERVICE_ENDPOINT", noMetadataService);
    }

    /// Writes a file below the home folder.
    std::filesystem::path write(const std::string& name, const std::string& content) const {
        const auto file = home.path() / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file;
    }

    TemporaryFolder home{"s3provider-home"};
    Environment environment;
    LogCapture log{factoryChannel};
};

}  // namespace testsupport
