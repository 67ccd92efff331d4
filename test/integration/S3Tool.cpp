#include "integration/S3Tool.hpp"

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

S3Tool::S3Tool(std::string name, Way way)
    : program(std::move(name)),
      target(way),
      environment{{"HOME", folder.string()}, {"PATH", "/usr/bin:/bin"}, {"LC_ALL", "C.UTF-8"}} {}

void S3Tool::SetUp() {
    if (!installedProgram(program))
        GTEST_SKIP() << program << " isn't installed; tools/install-deps integration installs it";
}

Finished S3Tool::call(const std::vector<std::string>& arguments) const {
    std::vector<std::string> words{installedProgram(program).value()};
    words.insert(words.end(), leadingArguments.begin(), leadingArguments.end());
    words.insert(words.end(), arguments.begin(), arguments.end());
    return run(words, environment, folder.string());
}

std::string S3Tool::output(const std::vector<std::string>& arguments) const {
    const auto finished = call(arguments);
    EXPECT_EQ(finished.status, 0) << joined(arguments) << finished.out << finished.err;
    EXPECT_EQ(finished.err.find("ERROR"), std::string::npos) << joined(arguments) << finished.err;
    return finished.out;
}

void S3Tool::expectRefusal(const std::vector<std::string>& arguments, const std::string& complaint) const {
    const auto finished = call(arguments);
    EXPECT_NE(finished.status, 0) << joined(arguments);
    EXPECT_NE(finished.err.find(complaint), std::string::npos) << joined(arguments) << finished.err;
}

void S3Tool::writeFile(const std::string& name, const std::string& content) const {
    const auto path = folder / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
    std::filesystem::last_write_time(path,
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
}

std::string S3Tool::readFile(const std::string& name) const {
    std::ostringstream content;
    content << std::ifstream(folder / name, std::ios::binary).rdbuf();
    return content.str();
}

long S3Tool::requests(const std::string& operation) {
    const auto all = server.requests();
    return std::count_if(all.begin(), all.end(),
                         [&](const auto& request) { return request.operation == operation; });
}

std::string largeContent() {
    std::mt19937 random;
    std::string bytes(20UL * 1024 * 1024 + 12345, '\0');
    for (auto& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

}  // namespace testsupport
