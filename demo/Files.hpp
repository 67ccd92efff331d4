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

/// A file of more than two parts. Throws std::runtime_error when this machine has none in its usual places.
std::filesystem::path largeFile();

/// Bytes of every part of an upload but the last: the fewest that S3 takes.
constexpr std::uint64_t partSize = std::uint64_t{5} * 1024 * 1024;

}  // namespace demo
