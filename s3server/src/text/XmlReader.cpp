#include "text/XmlReader.hpp"

#include <string_view>

#include "operations/S3Error.hpp"

namespace s3server {
namespace {

std::string textOf(const tinyxml2::XMLElement& element) {
    std::string text;
    for (const auto* node = element.FirstChild(); node; node = node->NextSibling())
        if (node->ToText()) text += node->Value();
    return text;
}

}  // namespace

XmlReader::XmlReader(const Bytes& document, const char* root) {
    const std::string text = document.text();
    const bool parsed = document_.Parse(text.data(), text.size()) == tinyxml2::XML_SUCCESS;
    if (!parsed || !document_.RootElement() || document_.RootElement()->Name() != std::string_view(root))
        throw S3Error("MalformedXML");
}

std::vector<const tinyxml2::XMLElement*> childrenOf(const tinyxml2::XMLElement& element, const char* name) {
    std::vector<const tinyxml2::XMLElement*> children;
    for (const auto* child = element.FirstChildElement(name); child; child = child->NextSiblingElement(name))
        children.push_back(child);
    return children;
}

std::string childText(const tinyxml2::XMLElement& element, const char* name) {
    const auto* const child = element.FirstChildElement(name);
    return child ? textOf(*child) : std::string();
}

std::string requiredChildText(const tinyxml2::XMLElement& element, const char* name) {
    const auto* const child = element.FirstChildElement(name);
    if (!child) throw S3Error("MalformedXML");
    return textOf(*child);
}

}  // namespace s3server
