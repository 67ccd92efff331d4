#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "conformance/EmbeddedTarget.hpp"
#include "support/Process.hpp"
#include "support/TemporaryFolder.hpp"

namespace testsupport {

/// Amazon's command-line tool, talking to an embedded server, with a folder of its own for its files and
/// nothing of this machine's configuration. Skips the test where the tool isn't installed.
class AwsCommandLine : public ::testing::Test {
public:
    explicit AwsCommandLine(Way way = Way::HttpPath);

protected:
    void SetUp() override;

    /// Runs `aws ARGUMENTS` in the folder.
    Finished aws(std::vector<std::string> arguments) const;
    /// Of one that must succeed, what it printed.
    std::string output(const std::vector<std::string>& arguments) const;
    nlohmann::json document(const std::vector<std::string>& arguments) const;
    /// Expects that it fails and says that.
    void expectRefusal(const std::vector<std::string>& arguments, const std::string& complaint) const;

    /// Dated so that everything on the server is younger, as `sync` asks by the second.
    void writeFile(const std::string& name, const std::string& content) const;
    std::string readFile(const std::string& name) const;
    /// How many requests of that operation the server got.
    long requests(const std::string& operation);

    EmbeddedTarget target;
    s3server::Server& server = target.server();
    const TemporaryFolder home{"aws-tool"};
    const std::filesystem::path& folder = home.path();
    Variables environment;
};

/// Bytes that differ from one part to the next.
std::string mixedBytes(std::size_t size);

}  // namespace testsupport
