#pragma once

#include <tinyxml2.h>

#include <string>
#include <vector>

#include "store/Bytes.hpp"

namespace s3server {

/// A document of a request. Name spaces are not looked at.
class XmlReader {
public:
    /// Throws S3Error MalformedXML if it isn't well-formed or has another root element.
    XmlReader(const Bytes& document, const char* root);

    const tinyxml2::XMLElement& root() const { return *document_.RootElement(); }

private:
    tinyxml2::XMLDocument document_;
};

/// The element's children of that name, in order.
std::vector<const tinyxml2::XMLElement*> childrenOf(const tinyxml2::XMLElement& element, const char* name);
/// The text of the first child of that name, with references resolved; empty if there is none.
std::string childText(const tinyxml2::XMLElement& element, const char* name);
/// The same, but throws S3Error MalformedXML if there is none.
std::string requiredChildText(const tinyxml2::XMLElement& element, const char* name);

}  // namespace s3server
