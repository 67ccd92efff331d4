#pragma once

#include <filesystem>

namespace s3vfs {

/// The file of the plug-in's bundle, beside the running program: where it is installed, else where it is
/// built. Throws std::runtime_error, which tells the places, when it is at none of them.
std::filesystem::path bundleBesideProgram();

}  // namespace s3vfs
