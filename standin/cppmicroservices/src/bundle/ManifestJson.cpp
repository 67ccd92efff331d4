#include "bundle/ManifestJson.hpp"

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <vector>

namespace cppmicroservices::detail {

using nlohmann::json;

namespace {

constexpr int maximumDepth = 32;
constexpr std::uint64_t largest = std::numeric_limits<std::int64_t>::max();

bool limitDepth(int depth, json::parse_event_t, json&) {
    if (depth > maximumDepth) throw std::runtime_error("its manifest's values lie too deep in each other");
    return true;
}

Any wholeNumber(std::int64_t number) {
    const bool fits = number >= std::numeric_limits<int>::min() && number <= std::numeric_limits<int>::max();
    return fits ? Any(static_cast<int>(number)) : Any(static_cast<long>(number));
}

Any listOf(const json& list) {
    std::vector<Any> values;
    for (const json& value : list)
        values.push_back(valueOf(value));
    return values;
}

}  // namespace

json parseManifestJson(const std::string& text) {
    json manifest;
    try {
        manifest = json::parse(text, limitDepth);
    } catch (const json::exception& error) {
        throw std::runtime_error(std::string("its manifest isn't JSON: ") + error.what());
    }
    if (!manifest.is_object()) throw std::runtime_error("its manifest isn't a JSON object");
    return manifest;
}

AnyMap headersOf(const json& object) {
    AnyMap headers(AnyMap::UNORDERED_MAP_CASEINSENSITIVE_KEYS);
    for (const auto& [name, value] : object.items()) {
        const auto alike = headers.find(name);
        if (alike != headers.end())
            throw std::runtime_error("its manifest isn't understood: the names '" + alike->first + "' and '" +
                                     name + "' differ in case only");
        headers[name] = valueOf(value);
    }
    return headers;
}

Any valueOf(const json& value) {
    switch (value.type()) {
        case json::value_t::string:
            return value.get<std::string>();
        case json::value_t::boolean:
            return value.get<bool>();
        case json::value_t::number_integer:
            return wholeNumber(value.get<std::int64_t>());
        case json::value_t::number_unsigned:
            if (value.get<std::uint64_t>() <= largest) return wholeNumber(value.get<std::int64_t>());
            [[fallthrough]];
        case json::value_t::number_float:
            return value.get<double>();
        case json::value_t::object:
            return headersOf(value);
        case json::value_t::array:
            return listOf(value);
        default:
            return {};
    }
}

}  // namespace cppmicroservices::detail
