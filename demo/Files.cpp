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

fs::path largeFile() {
    for (const char* const folder :
         {"/usr/bin", "/usr/lib/gcc/x86_64-linux-gnu/12", "/usr/lib/gcc/aarch64-linux-gnu/12", "/usr/lib"}) {
        std::error_code unreadable;
        for (const auto& entry : fs::directory_iterator(folder, unreadable)) {
            if (entry.is_regular_file() && entry.file_size() > 2 * partSize && std::ifstream(entry.path()))
                return entry.path();
        }
    }
    throw std::runtime_error("no file of more than " + std::to_string(2 * partSize) + " bytes found");
}

}  // namespace demo
