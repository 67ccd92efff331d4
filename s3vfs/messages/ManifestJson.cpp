#include "messages/ManifestJson.hpp"

#include <cppmicroservices/Any.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace s3vfs {

using cppmicroservices::Any;
using cppmicroservices::any_cast;
using cppmicroservices::AnyMap;
using nlohmann::json;

namespace {

json jsonOf(const Any& value);

json jsonOf(const std::vector<Any>& list) {
    json values = json::array();
    for (const Any& value : list)
        values.push_back(jsonOf(value));
    return values;
}

/// The value when it is of one of these types, else null.
template <class... Types>
json jsonOfEither(const Any& value) {
    json found;
    const auto take = [&found](const auto* held) {
        if (held) found = *held;
    };
    (take(any_cast<Types>(&value)), ...);
    return found;
}

json jsonOf(const Any& value) {
    if (const auto* object = any_cast<AnyMap>(&value)) return s3vfs::jsonOf(*object);
    if (const auto* list = any_cast<std::vector<Any>>(&value)) return jsonOf(*list);
    return jsonOfEither<std::string, bool, int, long, double>(value);
}

}  // namespace

json jsonOf(const AnyMap& manifest) {
    json object = json::object();
    for (const auto& [name, value] : manifest)
        object[name] = jsonOf(value);
    return object;
}

}  // namespace s3vfs
