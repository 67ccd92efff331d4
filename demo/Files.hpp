#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace demo {

/// The whole file. Throws std::runtime_error when it can't be read.
std::string readFile(const std::filesystem::path& file);

/// Regular, readable files below `folder`, at most `count`, in the order of their names.
std::vector<std::filesystem::path> filesBelow(const std::filesystem::path& folder, std::size_t count);

/// A regular file of at least so many bytes in one of the folders (not below). Throws std::runtime_error
/// when there is none.
std::filesystem::path fileOfAtLeast(std::uintmax_t bytes, const std::vector<std::filesystem::path>& folders);

}  // namespace demo
