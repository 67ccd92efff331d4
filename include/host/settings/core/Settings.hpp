#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace settings::core {

/// Settings that can't be read, aren't JSON, or hold another type than was asked for. The message names the
/// place and never quotes a value, which may be a password.
class SettingsError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A node in a tree of settings: values by key, and further nodes. It never changes; any thread may read it.
class Settings {
public:
    /// The root of the settings in a JSON object (RFC 8259): nodes are objects. Throws SettingsError.
    static std::shared_ptr<Settings> fromJson(std::string_view json);

    /// The node below this one with that dotted name, such as "orrery.web"; null when there is none.
    std::shared_ptr<Settings> getSettingsByFullName(const std::string& name) const;

    /// The value of a key; false or empty text when it is missing or null. Throws SettingsError when it is of
    /// another type: `bool` takes true and false only, `std::u16string` takes text only. The second argument
    /// is not used; pass the empty string.
    template <typename T>
    T get(const std::string& key, const std::string& reserved) const;

private:
    class Node;

    explicit Settings(std::shared_ptr<const Node> node);

    std::shared_ptr<const Node> node_;
};

template <>
bool Settings::get<bool>(const std::string& key, const std::string& reserved) const;

template <>
std::u16string Settings::get<std::u16string>(const std::string& key, const std::string& reserved) const;

}  // namespace settings::core
