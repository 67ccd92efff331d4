#pragma once

#include "replay/RecordedCase.hpp"
#include "support/process/Environment.hpp"
#include "support/process/TemporaryFolder.hpp"

#include <aws/core/Aws.h>

#include <filesystem>
#include <map>
#include <string>

namespace replay {

/// What a case finds: its variables, its files, and an SDK that was initialized among them. All is as before
/// at the end. Not for use while another thread reads the environment.
class Setting {
public:
    /// `ports` are the values of the placeholders that name ports, such as "{METAPORT}".
    explicit Setting(const Json& recorded, const std::map<std::string, std::string>& ports = {});
    ~Setting();
    Setting(const Setting&) = delete;
    Setting& operator=(const Setting&) = delete;

    /// Writes files of these names and contents below {DIR}, or below the home folder of a case that has one
    /// of its own.
    void write(const Json& files) const;

    /// With values for the placeholders.
    std::string live(std::string text) const;

    /// With placeholders for the values.
    std::string asRecorded(std::string text) const;

private:
    void changeEnvironment(const Json& variables);
    std::filesystem::path filesFolderOf(const Json& recorded) const;

    testsupport::TemporaryFolder folder_;
    testsupport::TemporaryFolder home_;
    std::map<std::string, std::string> placeholders_;
    std::filesystem::path filesFolder_;
    testsupport::Environment environment_;
    Aws::SDKOptions options_;
};

}  // namespace replay
