#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "conformance/targets/EmbeddedTarget.hpp"
#include "support/process/Process.hpp"
#include "support/process/TemporaryFolder.hpp"

namespace testsupport {

/// Another's command-line tool for S3, talking to an embedded server, with a folder of its own for its files
/// and nothing of this machine's configuration. Skips the test where the tool isn't installed.
class S3Tool : public ::testing::Test {
public:
    S3Tool(std::string name, Way way);

protected:
    void SetUp() override;

    /// Runs the tool in the folder with `leadingArguments` and these.
    Finished call(const std::vector<std::string>& arguments) const;
    /// Of one that must succeed without complaining of an error, what it printed.
    std::string output(const std::vector<std::string>& arguments) const;
    /// Expects that it fails and says that.
    void expectRefusal(const std::vector<std::string>& arguments, const std::string& complaint) const;

    /// Dated so that everything on the server is younger, as tools compare by the second.
    void writeFile(const std::string& name, const std::string& content) const;
    std::string readFile(const std::string& name) const;
    /// How many requests of that operation the server got.
    long requests(const std::string& operation);

    const std::string program;
    EmbeddedTarget target;
    s3server::Server& server = target.server();
    const TemporaryFolder home{"s3-tool"};
    const std::filesystem::path& folder = home.path();
    Variables environment;
    std::vector<std::string> leadingArguments;
};

/// Beyond every tool's threshold for uploads in parts, as the tests set it. Its bytes differ from one part to
/// the next.
std::string largeContent();

}  // namespace testsupport
