#include "replay/CleanEnvironment.hpp"

#include <stdlib.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace replay {
namespace {

constexpr std::array<std::string_view, 10> harmful{"http_proxy",    "https_proxy", "all_proxy", "no_proxy",
                                                   "HTTP_PROXY",    "HTTPS_PROXY", "ALL_PROXY", "NO_PROXY",
                                                   "SSL_CERT_FILE", "SSL_CERT_DIR"};

bool isHarmful(std::string_view name) {
    return name.substr(0, 4) == "AWS_" || std::find(harmful.begin(), harmful.end(), name) != harmful.end();
}

std::vector<std::string> harmfulVariables() {
    std::vector<std::string> names;
    for (char** variable = environ; *variable; ++variable) {
        const std::string_view text = *variable;
        const std::string_view name = text.substr(0, text.find('='));
        if (isHarmful(name)) names.emplace_back(name);
    }
    return names;
}

std::string makeFolder() {
    std::string folder = (std::filesystem::temp_directory_path() / "replay-home-XXXXXX").string();
    if (!mkdtemp(folder.data())) throw std::runtime_error("can't make " + folder);
    return folder;
}

}  // namespace

CleanEnvironment::CleanEnvironment() : home_(makeFolder()) {
    for (const std::string& name : harmfulVariables())
        variables_.unset(name);
    variables_.set("HOME", home_);
    variables_.set("AWS_EC2_METADATA_DISABLED", "true");
}

CleanEnvironment::~CleanEnvironment() {
    std::error_code ignored;
    std::filesystem::remove_all(home_, ignored);
}

}  // namespace replay
