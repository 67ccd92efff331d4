#include "settings/SettingsFile.hpp"

#include "fl/i18n.hpp"

#include <climits>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace settings {

namespace {

using core::Settings;
using core::SettingsError;
using std::filesystem::path;

constexpr std::size_t largestFile = std::size_t(4) << 20U;

path environmentPath(const char* variable) {
    return fl::i18n::getenv(variable);
}

/// Empty when the user has no home.
path userFile() {
    path folder = environmentPath("XDG_CONFIG_HOME");
    // A relative one counts as not set, as for every program that goes by the XDG base directories.
    if (!folder.is_absolute()) {
        const path home = environmentPath("HOME");
        if (home.empty()) return {};
        folder = home / ".config";
    }
    return folder / "s3vfs" / "settings.json";
}

std::string contentOf(const path& file) {
    std::ifstream in(file, std::ios::binary);
    std::string content(largestFile + 1, '\0');
    in.read(content.data(), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(in.gcount()));
    if (content.empty()) throw SettingsError("it is empty or can't be read");
    if (content.size() > largestFile) throw SettingsError("it is larger than 4 MiB");
    return content;
}

std::shared_ptr<Settings> read(const path& file) {
    const std::size_t length = file.native().size();
    if (length >= PATH_MAX)
        throw SettingsError("no settings file has a name of " + std::to_string(length) + " bytes");
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
