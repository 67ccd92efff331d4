#pragma once

#include <tinyxml2.h>

#include <string>
#include <string_view>

namespace standin::aws::s3 {

/// An XML document of an answer. What isn't well-formed, has more than 98 elements in each other (S3 has
/// five), or a tag of more than 4 KiB is no document.
class XmlDocument {
public:
    explicit XmlDocument(std::string_view text);

    /// Whether the text was a document. A declaration alone is one, without root.
    bool parsed() const { return !document_.Error() && !tooDeep_; }
    /// "XML_..."; only of what did not parse.
    std::string errorName() const { return tooDeep_ ? "XML_ELEMENT_DEPTH_EXCEEDED" : document_.ErrorName(); }
    /// Null without one.
    const tinyxml2::XMLElement* root() const { return parsed() ? document_.RootElement() : nullptr; }

private:
    tinyxml2::XMLDocument document_;
    bool tooDeep_ = false;
};

/// What is inside the element, as a printer would write it again: "<>&" and line ends escaped, CDATA markers
/// and inner elements kept. No trimming.
std::string printedText(const tinyxml2::XMLElement& element);

/// A document as a printer writes it, line ends in its texts escaped.
std::string printed(const tinyxml2::XMLDocument& document);

/// The printed text with the five predefined entities and line ends decoded.
std::string decodedText(const tinyxml2::XMLElement& element);

std::string trimmed(std::string_view text);

/// The texts of the first child of that name, each empty without one; null parents have no children.
std::string childText(const tinyxml2::XMLElement* parent, const char* name);
std::string trimmedChildText(const tinyxml2::XMLElement* parent, const char* name);

const tinyxml2::XMLElement* child(const tinyxml2::XMLElement* parent, const char* name);

/// For all children of that name, in their order.
template <typename Action>
void forEachChild(const tinyxml2::XMLElement* parent, const char* name, Action action) {
    for (const auto* each = child(parent, name); each != nullptr; each = each->NextSiblingElement(name))
        action(*each);
}

}  // namespace standin::aws::s3
