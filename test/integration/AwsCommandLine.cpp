#include "integration/AwsCommandLine.hpp"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <random>
#include <sstream>

namespace testsupport {

namespace {

std::string joined(const std::vector<std::string>& words) {
    std::string text;
    for (const auto& word : words)
        text += word + " ";
    return text;
}

}  // namespace

AwsCommandLine::AwsCommandLine(Way way) : target(way) {
    const auto access = target.access();
    environment = {{"HOME", folder.string()},
                   {"PATH", "/usr/bin:/bin"},
                   {"LC_ALL", "C.UTF-8"},
                   {"AWS_CONFIG_FILE", "/nonexistent"},
                   {"AWS_SHARED_CREDENTIALS_FILE", "/nonexistent"},
                   {"AWS_EC2_METADATA_DISABLED", "true"},
                   {"AWS_MAX_ATTEMPTS", "1"},
                   {"AWS_ACCESS_KEY_ID", access.keys.access},
                   {"AWS_SECRET_ACCESS_KEY", access.keys.secret},
                   {"AWS_DEFAULT_REGION", access.region}};
    if (!access.caFile.empty()) environment["AWS_CA_BUNDLE"] = access.caFile;
}

void AwsCommandLine::SetUp() {
    if (!installedProgram("aws"))
        GTEST_SKIP() << "aws isn't installed; tools/install-deps integration installs it";
}

Finished AwsCommandLine::aws(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(),
                     {installedProgram("aws").value(), "--endpoint-url", target.access().endpoint});
    return run(arguments, environment, folder.string());
}

std::string AwsCommandLine::output(const std::vector<std::string>& arguments) const {
    const auto finished = aws(arguments);
    EXPECT_EQ(finished.status, 0) << joined(arguments) << finished.out << finished.err;
    return finished.out;
}

nlohmann::json AwsCommandLine::document(const std::vector<std::string>& arguments) const {
    return nlohmann::json::parse(output(arguments));
}

void AwsCommandLine::expectRefusal(const std::vector<std::string>& arguments,
                                   const std::string& complaint) const {
    const auto finished = aws(arguments);
    EXPECT_NE(finished.status, 0) << joined(arguments);
    EXPECT_NE(finished.err.find(complaint), std::string::npos) << joined(arguments) << finished.err;
}

void AwsCommandLine::writeFile(const std::string& name, const std::string& content) const {
    const auto path = folder / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
    std::filesystem::last_write_time(path,
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
}

std::string AwsCommandLine::readFile(const std::string& name) const {
    std::ostringstream content;
    content << std::ifstream(folder / name, std::ios::binary).rdbuf();
    return content.str();
}

long AwsCommandLine::requests(const std::string& operation) {
    const auto all = server.requests();
    return std::count_if(all.begin(), all.end(),
                         [&](const auto& request) { return request.operation == operation; });
}

std::string mixedBytes(std::size_t size) {
    std::mt19937 random;
    std::string bytes(size, '\0');
    for (auto& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

}  // namespace testsupport
