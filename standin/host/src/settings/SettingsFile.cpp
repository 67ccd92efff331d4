#include "settings/SettingsFile.hpp"

#include "fl/i18n.hpp"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <system_error>

namespace settings {

namespace {

using core::Settings;
using core::SettingsError;
using std::filesystem::path;

path environmentPath(const char* variable) {
    return fl::i18n::getenv(variable);
}

/// Empty when the user has no home.
path userFile() {
    path folder = environmentPath("XDG_CONFIG_HOME");
    // The XDG base directory specification has relative ones ignored.
    if (!folder.is_absolute()) {
        const path home = environmentPath("HOME");
        if (home.empty()) return {};
        folder = home / ".config";
    }
    return folder / "s3vfs" / "settings.json";
}

std::string contentOf(const path& file) {
    const std::ifstream in(file, std::ios::binary);
    std::ostringstream content;
    if (!(content << in.rdbuf())) throw SettingsError("it is empty or can't be read");
    return content.str();
}

std::shared_ptr<Settings> read(const path& file) {
    try {
        return Settings::fromJson(contentOf(file));
    } catch (const SettingsError& error) {
        throw SettingsError("settings file '" + file.string() + "': " + error.what());
    }
}

}  // namespace

std::shared_ptr<Settings> readSettingsFile() {
    const path named = environmentPath("S3VFS_SETTINGS");
    if (!named.empty()) return read(named);
    const path own = userFile();
    std::error_code ignored;
    return std::filesystem::exists(own, ignored) ? read(own) : Settings::fromJson("{}");
}

}  // namespace settings
