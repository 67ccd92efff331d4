#include "bundle/ManifestNode.hpp"

#include <stdexcept>

namespace cppmicroservices::detail {

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
