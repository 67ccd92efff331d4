#include "core/ProfileFile.hpp"

#include <algorithm>
#include <fstream>
#include <utility>

#include "core/Text.hpp"

namespace standin::aws {
namespace {

using Settings = Aws::Map<Aws::String, Aws::String>;

/// In bytes. Junk in place of a file takes some hundred times its size in memory at worst.
constexpr std::size_t largestFile = 4UL * 1024 * 1024;

/// A shorter line can't say anything.
constexpr std::size_t shortestLine = 3;

constexpr std::string_view profileWord = "profile";
constexpr std::string_view defaultProfile = "default";

/// What may stand around a section's title; around settings it is all white space.
constexpr std::string_view blanks = " \t";

bool isNameCharacter(char c) {
    const bool alphanumeric = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
    return alphanumeric || std::string_view("-_./%@:+").find(c) != std::string_view::npos;
}

std::string_view withoutComment(std::string_view line) {
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    return line.substr(0, line.find_first_of("#;"));
}

/// Names and values end at a NUL.
std::string meaningOf(std::string_view text) {
    return std::string(trimmed(text.substr(0, text.find('\0'))));
}

/// What stands between the brackets; nothing when there is more on the line.
std::optional<std::string_view> sectionTitle(std::string_view line) {
    const std::string_view text = trimmed(line, blanks);
    if (text.front() != '[' || text.back() != ']') return std::nullopt;
    return trimmed(text.substr(1, text.size() - 2), blanks);
}

bool isProfileName(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), isNameCharacter);
}

/// Nothing when the section is not a profile.
std::optional<std::string> profileName(std::string_view line, ProfileSections sections) {
    auto title = sectionTitle(line);
    if (!title) return std::nullopt;
    if (sections == ProfileSections::Prefixed && *title != defaultProfile) {
        const bool prefixed = title->substr(0, profileWord.size()) == profileWord &&
                              title->size() > profileWord.size() &&
                              blanks.find((*title)[profileWord.size()]) != std::string_view::npos;
        if (!prefixed) return std::nullopt;
        title = trimmed(title->substr(profileWord.size()), blanks);
    }
    return isProfileName(*title) ? std::optional<std::string>(*title) : std::nullopt;
}

Aws::Auth::AWSCredentials credentialsFrom(const Settings& settings, const std::string& accessKeyId) {
    const auto value = [&](const char* name) {
        const auto found = settings.find(name);
        return found != settings.end() ? found->second : std::string();
    };
    return {accessKeyId, value("aws_secret_access_key"), value("aws_session_token")};
}

/// Reads line by line: it knows in which section it is, and keeps a section's settings until its end.
class Reader {
public:
    explicit Reader(ProfileSections sections) : sections_(sections) {}

    /// False when the line can't be part of a profile file.
    bool readLine(std::string_view line) {
        if (line.size() < shortestLine || trimmed(line, blanks).empty()) return true;
        const bool hasBrackets =
            line.find('[') != std::string_view::npos && line.find(']') != std::string_view::npos;
        if (hasBrackets) {
            beginSection(line);
            return true;
        }
        return section_ == Section::Other || (section_ == Section::Profile && readSetting(line));
    }

    void endSection() {
        if (section_ != Section::Profile) return;
        Aws::Config::Profile& profile = profiles_[name_];
        profile.SetName(name_);
        const auto region = settings_.find("region");
        if (region != settings_.end()) profile.SetRegion(region->second);
        const auto accessKeyId = settings_.find("aws_access_key_id");
        if (accessKeyId != settings_.end())
            profile.SetCredentials(credentialsFrom(settings_, accessKeyId->second));
        profile.SetAllKeyValPairs(std::exchange(settings_, {}));
    }

    /// Of the sections that ended.
    Profiles takeProfiles() { return std::move(profiles_); }

private:
    enum class Section { None, Profile, Other };

    void beginSection(std::string_view line) {
        endSection();
        const auto name = profileName(line, sections_);
        section_ = name ? Section::Profile : Section::Other;
        name_ = name.value_or("");
    }

    bool readSetting(std::string_view line) {
        const auto equals = line.find('=');
        if (equals == std::string_view::npos) return false;
        settings_[meaningOf(line.substr(0, equals))] = meaningOf(line.substr(equals + 1));
        return true;
    }

    ProfileSections sections_;
    Section section_ = Section::None;
    std::string name_;
    Settings settings_;
    Profiles profiles_;
};

}  // namespace

Profiles parseProfiles(std::string_view text, ProfileSections sections) {
    Reader reader(sections);
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        if (!reader.readLine(withoutComment(line))) return reader.takeProfiles();
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    reader.endSection();
    return reader.takeProfiles();
}

std::optional<std::string> readProfileFile(const std::string& fileName) {
    std::ifstream file(fileName, std::ios::binary);
    std::string content;
    char buffer[4096];
    while (file && content.size() <= largestFile) {
        file.read(buffer, sizeof buffer);
        content.append(buffer, static_cast<std::size_t>(file.gcount()));
    }
    if (!file.eof() || content.size() > largestFile) return std::nullopt;
    return content;
}

}  // namespace standin::aws
