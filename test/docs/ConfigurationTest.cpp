#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

namespace {

using Names = std::set<std::string>;

const std::filesystem::path sources = SOURCE_FOLDER;

std::string read(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    EXPECT_TRUE(in) << file;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// The names that stand between two of these marks in a text.
Names variablesIn(const std::string& text, char mark) {
    const std::regex name(
        mark + std::string("((ZR|AWS|S3VFS|S3SERVER|XDG)_[A-Z0-9_]+|HOME|NO_PROXY|no_proxy)") + mark);
    Names names;
    for (std::sregex_iterator found(text.begin(), text.end(), name), end; found != end; ++found)
        names.insert(found->str(1));
    return names;
}

Names variablesReadBelow(const std::string& folder) {
    Names names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(sources / folder))
        if (entry.path().extension() == ".cpp" || entry.path().extension() == ".hpp")
            names.merge(variablesIn(read(entry.path()), '"'));
    return names;
}

/// Of the tables, in which a variable's row begins with its name.
Names variablesDocumented() {
    std::ifstream in(sources / "docs" / "configuration.md");
    Names names;
    for (std::string line; std::getline(in, line);)
        if (line.rfind("| `", 0) == 0) names.merge(variablesIn(line.substr(0, line.find('|', 1)), '`'));
    return names;
}

TEST(Configuration, DocumentsExactlyTheVariablesThatAreRead) {
    Names readBySources;
    for (const char* const folder : {"src", "standin", "s3server", "s3vfs"})
        readBySources.merge(variablesReadBelow(folder));
    EXPECT_THAT(variablesDocumented(), ::testing::ContainerEq(readBySources));
}

}  // namespace
