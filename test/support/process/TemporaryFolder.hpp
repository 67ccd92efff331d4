#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>

namespace testsupport {

/// A new folder among the system's temporary ones that goes, with all it holds, when this object does.
class TemporaryFolder {
public:
    /// `name` begins the folder's name. Throws std::runtime_error when it can't be made.
    explicit TemporaryFolder(const std::string& name = "s3provider-test") {
        std::string pattern = (std::filesystem::temp_directory_path() / (name + "-XXXXXX")).string();
        if (!::mkdtemp(pattern.data())) throw std::runtime_error("can't make the folder " + pattern);
        path_ = pattern;
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

    /// Makes or replaces a file below the folder, and the folders above it.
    std::filesystem::path write(const std::string& name, const std::string& content) const {
        auto file = path_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << content;
        return file;
    }

private:
    std::filesystem::path path_;
};

}  // namespace testsupport
