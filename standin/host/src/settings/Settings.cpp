#include "settings/core/Settings.hpp"

#include "fl/i18n.hpp"

#include <nlohmann/json.hpp>

#include <cstddef>
#include <utility>

namespace settings::core {

using nlohmann::json;

class Settings::Node {
public:
    explicit Node(json object) : object_(std::move(object)) {}

    /// The value of a key; null when it is missing.
    const json& value(const std::string& key) const {
        static const json missing;
        const auto found = object_.find(key);
        return found == object_.end() ? missing : *found;
    }

private:
    json object_;
};

namespace {

json parsed(std::string_view text) {
    try {
        return json::parse(text);
    } catch (const json::parse_error& error) {
        // The parser's own message quotes the text.
        throw SettingsError("bad JSON at byte " + std::to_string(error.byte));
    }
}

SettingsError wrongType(const std::string& key, const char* expected, const json& value) {
    return SettingsError("setting '" + key + "' must be " + expected + ", not " + value.type_name());
}

}  // namespace

Settings::Settings(std::shared_ptr<const Node> node) : node_(std::move(node)) {}

std::shared_ptr<Settings> Settings::fromJson(std::string_view text) {
    json root = parsed(text);
    if (!root.is_object())
        throw SettingsError(std::string("the JSON must be an object, not ") + root.type_name());
    return std::shared_ptr<Settings>(new Settings(std::make_shared<Node>(std::move(root))));
}

std::shared_ptr<Settings> Settings::getSettingsByFullName(const std::string& name) const {
    const auto dot = name.find('.');
    const json& child = node_->value(name.substr(0, dot));
    if (!child.is_object()) return nullptr;
    const std::shared_ptr<Settings> settings(new Settings(std::make_shared<Node>(child)));
    return dot == std::string::npos ? settings : settings->getSettingsByFullName(name.substr(dot + 1));
}

template <>
bool Settings::get<bool>(const std::string& key, const std::string&) const {
    const json& value = node_->value(key);
    if (value.is_null()) return false;
    if (!value.is_boolean()) throw wrongType(key, "true or false", value);
    return value.get<bool>();
}

template <>
std::u16string Settings::get<std::u16string>(const std::string& key, const std::string&) const {
    const json& value = node_->value(key);
    if (value.is_null()) return {};
    if (!value.is_string()) throw wrongType(key, "text", value);
    return fl::i18n::to_ustring(value.get_ref<const std::string&>());
}

}  // namespace settings::core
