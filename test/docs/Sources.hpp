#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

/// Names picked out of the project's files.
namespace docs {

using Names = std::set<std::string>;

inline const std::filesystem::path sources = SOURCE_FOLDER;

inline std::string read(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    EXPECT_TRUE(in) << file;
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// Each match of a pattern, written by a format of std::regex_replace().
inline Names namesIn(const std::string& text, const std::regex& pattern, const std::string& format = "$1") {
    Names names;
    for (std::sregex_iterator found(text.begin(), text.end(), pattern), end; found != end; ++found)
        names.insert(found->format(format));
    return names;
}

/// The same in all C++ files of a folder and those in it.
inline Names namesBelow(const std::string& folder, const std::regex& pattern,
                        const std::string& format = "$1") {
    Names names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(sources / folder))
        if (entry.path().extension() == ".cpp" || entry.path().extension() == ".hpp")
            names.merge(namesIn(read(entry.path()), pattern, format));
    return names;
}

}  // namespace docs
