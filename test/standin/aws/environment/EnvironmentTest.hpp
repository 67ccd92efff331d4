#pragma once

#include <aws/core/Aws.h>
#include <aws/core/auth/AWSCredentials.h>
#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <vector>

#include "support/process/CleanEnvironment.hpp"
#include "support/servers/ScriptedServer.hpp"

/// An environment without anything of AWS but what a test puts there.
class EnvironmentTest : public ::testing::Test {
protected:
    ~EnvironmentTest() override;

    /// Initializes the SDK. What it reads then it keeps.
    void initializeSdk();

    const std::filesystem::path& home() const { return clean_.home().path(); }

    /// Writes a file below the home folder.
    std::filesystem::path write(const std::string& name, const std::string& content) const;

private:
    testsupport::CleanEnvironment clean_;

protected:
    testsupport::Environment environment;

private:
    Aws::SDKOptions options_;
    bool initialized_ = false;
};

/// "KEY:SECRET" or "KEY:SECRET:TOKEN".
std::string toString(const Aws::Auth::AWSCredentials& credentials);

/// A metadata service's answers.
namespace metadata {

testsupport::Script text(const std::string& body);
testsupport::Script status(int code);

/// Of a role, until 2099 unless told otherwise.
std::string credentials(const std::string& key, const std::string& expiration = "2099-01-01T00:00:00Z");

/// Those to one request for credentials: the token, the role, the role's credentials.
std::vector<testsupport::Script> conversation(const std::string& credentials);

}  // namespace metadata

/// "PUT /latest/api/token" and so on.
std::vector<std::string> requestLines(const testsupport::ScriptedServer& server);
