#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace cppmicroservices::detail {

/// A value of a manifest, which knows where it stands. Whatever isn't as it is asked for throws a
/// std::runtime_error that names the place. Refers to the manifest.
class ManifestNode {
public:
    explicit ManifestNode(const nlohmann::json& manifest) : value_(manifest) {}

    /// A member of an object; `find` gives nothing when there is none.
    ManifestNode at(const std::string& name) const;
    std::optional<ManifestNode> find(const std::string& name) const;

    /// A text that isn't empty.
    std::string text() const;
    bool truth() const;
    std::vector<ManifestNode> list() const;
    const nlohmann::json& object() const;

    /// The member, when there is one, must be this text.
    void requireText(const std::string& name, const std::string& only) const;

    /// The member "version" must be this number.
    void requireVersion(int only) const;

    [[noreturn]] void fail(const std::string& why) const;

private:
    ManifestNode(const nlohmann::json& value, std::string place) : value_(value), place_(std::move(place)) {}

    const nlohmann::json& value_;
    std::string place_;  // "scr.components[0].name"; empty for the manifest itself
};

}  // namespace cppmicroservices::detail
