#pragma once

#include "cppmicroservices/AnyMap.h"

#include <nlohmann/json.hpp>

#include <string>

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

}  // namespace cppmicroservices::detail
