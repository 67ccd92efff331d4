#include "EnvironmentTest.hpp"

using testsupport::Script;
using testsupport::ScriptedServer;
using testsupport::Step;

EnvironmentTest::~EnvironmentTest() {
    if (initialized_) Aws::ShutdownAPI(options_);
}

void EnvironmentTest::initializeSdk() {
    Aws::InitAPI(options_);
    initialized_ = true;
}

std::filesystem::path EnvironmentTest::write(const std::string& name, const std::string& content) const {
    return clean_.home().write(name, content);
}

std::string toString(const Aws::Auth::AWSCredentials& credentials) {
    const std::string pair = credentials.GetAWSAccessKeyId() + ":" + credentials.GetAWSSecretKey();
    return credentials.GetSessionToken().empty() ? pair : pair + ":" + credentials.GetSessionToken();
}

Script metadata::text(const std::string& body) {
    return {Step::send(testsupport::httpReply(200, {}, body))};
}

Script metadata::status(int code) {
    return {Step::send(testsupport::httpReply(code))};
}

std::string metadata::credentials(const std::string& key, const std::string& expiration) {
    return R"({"Code": "Success", "AccessKeyId": ")" + key +
           R"(", "SecretAccessKey": "SECRET", "Token": "TOKEN", "Expiration": ")" + expiration + "\"}";
}

std::vector<Script> metadata::conversation(const std::string& credentials) {
    return {text("token"), text("role"), text(credentials)};
}

std::vector<std::string> requestLines(const ScriptedServer& server) {
    std::vector<std::string> lines;
    for (const auto& request : server.requests())
        lines.push_back(request.method + " " + request.target);
    return lines;
}
