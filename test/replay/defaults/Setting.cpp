#include "replay/defaults/Setting.hpp"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>

namespace replay {
namespace {

std::string homeByUserDatabase() {
    const passwd* const user = getpwuid(getuid());
    if (user == nullptr) throw std::runtime_error("the user who runs the tests has no entry");
    return user->pw_dir;
}

std::string replaceAll(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

}  // namespace

Setting::Setting(const Json& recorded, const std::map<std::string, std::string>& ports)
    : placeholders_(ports) {
    placeholders_["{DIR}"] = folder_.path().string();
    placeholders_["{HOME}"] = home_.path().string();
    placeholders_["{PASSWD_HOME}"] = homeByUserDatabase();
    environment_.set("HOME", home_.path().string());
    if (recorded["kind"] == "metadata") environment_.unset("AWS_EC2_METADATA_DISABLED");
    changeEnvironment(recorded.value("environment", Json::object()));
    filesFolder_ = filesFolderOf(recorded);
    write(recorded.value("files", Json::object()));
    Aws::InitAPI(options_);
}

Setting::~Setting() {
    Aws::ShutdownAPI(options_);
}

void Setting::changeEnvironment(const Json& variables) {
    for (const auto& [name, value] : variables.items())
        value.is_null() ? environment_.unset(name) : environment_.set(name, live(value));
}

std::filesystem::path Setting::filesFolderOf(const Json& recorded) const {
    const Json::json_pointer home("/environment/HOME");
    const bool own = recorded.contains(home) && recorded[home].is_string();
    return live(own ? recorded[home].get<std::string>() : "{DIR}");
}

void Setting::write(const Json& files) const {
    for (const auto& [name, text] : files.items()) {
        const std::filesystem::path file = filesFolder_ / name;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text.get<std::string>();
    }
}

std::string Setting::live(std::string text) const {
    for (const auto& [placeholder, value] : placeholders_)
        text = replaceAll(std::move(text), placeholder, value);
    return text;
}

std::string Setting::asRecorded(std::string text) const {
    for (const auto& [placeholder, value] : placeholders_)
        text = replaceAll(std::move(text), value, placeholder);
    return text;
}

}  // namespace replay
