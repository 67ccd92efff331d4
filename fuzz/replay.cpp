#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <vector>

#include "FuzzTarget.hpp"

namespace {

using std::filesystem::path;

std::vector<path> filesIn(const path& folder) {
    std::vector<path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

void replay(const path& file) {
    std::cout << file.filename().string() << std::endl;  // flushed: the last name is the one that failed
    std::ifstream in(file, std::ios::binary);
    in.exceptions(std::ios::failbit | std::ios::badbit);
    std::ostringstream content;
    content << in.rdbuf();
    const std::string bytes = content.str();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

/// Runs a fuzz target once over every file of a corpus.
int main(int argc, char** argv) try {
    if (argc != 2) throw std::invalid_argument("usage: fuzz_TARGET FOLDER");
    const auto files = filesIn(argv[1]);
    if (files.empty()) throw std::invalid_argument(std::string(argv[1]) + " holds no file");
    for (const path& file : files)
        replay(file);
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 2;
}
