#include "bundle/ManifestNode.hpp"

#include <cstdint>
#include <limits>
#include <stdexcept>

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

ManifestNode ManifestNode::at(const std::string& name) const {
    if (const auto member = find(name)) return *member;
    fail("'" + name + "' is missing");
}

std::optional<ManifestNode> ManifestNode::find(const std::string& name) const {
    const auto member = object().find(name);
    if (member == value_.end()) return std::nullopt;
    return ManifestNode(*member, place_.empty() ? name : place_ + "." + name);
}

std::string ManifestNode::text() const {
    if (!value_.is_string() || value_.get_ref<const std::string&>().empty()) fail("a text is expected");
    return value_.get<std::string>();
}

bool ManifestNode::truth() const {
    if (!value_.is_boolean()) fail("true or false is expected");
    return value_.get<bool>();
}

std::vector<ManifestNode> ManifestNode::list() const {
    if (!value_.is_array()) fail("a list is expected");
    std::vector<ManifestNode> elements;
    for (const nlohmann::json& element : value_)
        elements.push_back(ManifestNode(element, place_ + "[" + std::to_string(elements.size()) + "]"));
    return elements;
}

const nlohmann::json& ManifestNode::object() const {
    if (!value_.is_object()) fail("an object is expected");
    return value_;
}

void ManifestNode::requireText(const std::string& name, const std::string& only) const {
    const auto member = find(name);
    if (member && member->text() != only) member->fail("only '" + only + "' is supported");
}

void ManifestNode::requireVersion(int only) const {
    const ManifestNode version = at("version");
    if (version.value_ != only) version.fail("only " + std::to_string(only) + " is supported");
}

void ManifestNode::fail(const std::string& why) const {
    throw std::runtime_error("its manifest isn't understood: " +
                             (place_.empty() ? why : place_ + ": " + why));
}

}  // namespace cppmicroservices::detail
