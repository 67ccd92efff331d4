#include "framework/BundleFile.hpp"

#include <stdexcept>
#include <string>

namespace s3vfs {

namespace fs = std::filesystem;

namespace {

/// Seen from the program's folder.
constexpr const char* places[] = {INSTALLED_BUNDLE, BUILT_BUNDLE};

}  // namespace

fs::path bundleBesideProgram() {
    const fs::path folder = fs::read_symlink("/proc/self/exe").parent_path();
    std::string missing;
    for (const char* const place : places) {
        fs::path file = (folder / place).lexically_normal();
        if (fs::is_regular_file(file)) return file;
        missing += (missing.empty() ? "" : ", nor ") + file.string();
    }
    throw std::runtime_error("the plug-in's bundle is missing; there is no " + missing +
                             ". Tell where it is with --bundle");
}

}  // namespace s3vfs
