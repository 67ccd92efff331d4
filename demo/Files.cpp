#include "Files.hpp"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace demo {

namespace fs = std::filesystem;

std::string readFile(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream content;
    if (!in || (fs::file_size(file) > 0 && !(content << in.rdbuf()))) {
        throw std::runtime_error(file.string() + " can't be read");
    }
    return content.str();
}

std::vector<fs::path> filesBelow(const fs::path& folder, std::size_t count) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    files.resize(std::min(files.size(), count));
    return files;
}

fs::path fileOfAtLeast(std::uintmax_t bytes, const std::vector<fs::path>& folders) {
    for (const auto& folder : folders) {
        std::error_code unreadable;
        for (const auto& entry : fs::directory_iterator(folder, unreadable)) {
            if (entry.is_regular_file() && entry.file_size() >= bytes && std::ifstream(entry.path())) {
                return entry.path();
            }
        }
    }
    throw std::runtime_error("no file of " + std::to_string(bytes) + " bytes found to upload in parts");
}

}  // namespace demo
