#pragma once

#include "cppmicroservices/AnyMap.h"

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace cppmicroservices::detail {

/// Reads a JSON object. Throws std::runtime_error when it isn't JSON or no object, and when values lie more
/// than 32 deep in each other.
nlohmann::json parseManifestJson(const std::string& text);

/// The object as a bundle's headers: texts are std::string, whole numbers int, or long where they are too
/// large for it, other numbers double, objects AnyMap, lists std::vector<Any>, null an empty value. The names
/// match in any case. Throws std::runtime_error when two differ in nothing else.
AnyMap headersOf(const nlohmann::json& object);

/// One value, as headersOf has it.
Any valueOf(const nlohmann::json& value);

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
