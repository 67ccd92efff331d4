#pragma once

#include <unistd.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/process/Environment.hpp"
#include "support/process/TemporaryFolder.hpp"

namespace testsupport {

/// An environment with an empty home folder, without a variable of the SDK, of the plug-in, of proxies, of
/// certificate stores or of the stand-in host's settings, and with metadata lookup off. The old one is back
/// at the end. Not for use while another thread reads the environment.
class CleanEnvironment {
public:
    CleanEnvironment() {
        for (const std::string& name : harmfulVariables())
            variables_.unset(name);
        variables_.set("HOME", home_.path());
        variables_.set("AWS_EC2_METADATA_DISABLED", "true");
        variables_.set("AWS_EC2_METADATA_SERVICE_ENDPOINT", noMetadataService);
    }

    const TemporaryFolder& home() const { return home_; }

private:
    static bool isHarmful(std::string_view name) {
        for (const std::string_view harmful :
             {"http_proxy", "https_proxy", "all_proxy", "no_proxy", "HTTP_PROXY", "HTTPS_PROXY", "ALL_PROXY",
              "NO_PROXY", "SSL_CERT_FILE", "SSL_CERT_DIR", "XDG_CONFIG_HOME", "S3VFS_SETTINGS"})
            if (name == harmful) return true;
        return name.substr(0, 4) == "AWS_" || name.substr(0, 3) == "ZR_";
    }

    static std::vector<std::string> harmfulVariables() {
        std::vector<std::string> names;
        for (char** variable = environ; *variable != nullptr; ++variable) {
            const std::string_view text = *variable;
            const std::string_view name = text.substr(0, text.find('='));
            if (isHarmful(name)) names.emplace_back(name);
        }
        return names;
    }

    TemporaryFolder home_;
    Environment variables_;
};

}  // namespace testsupport
