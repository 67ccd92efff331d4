#include "text/Encoding.hpp"

#include <tinyxml2.h>
#include <utf8.h>

#include "FuzzTarget.hpp"
#include "text/Xml.hpp"

using namespace fuzz;
using namespace s3server;

namespace {

std::string readBack(const std::string& text) {
    XmlWriter xml;
    xml.open("text").element("a", text).close();
    tinyxml2::XMLDocument document;
    require(document.Parse(xml.document().c_str()) == tinyxml2::XML_SUCCESS, "what is written is XML");
    const char* const read = document.RootElement()->FirstChildElement("a")->GetText();
    return read != nullptr ? read : "";
}

/// tinyxml2 takes text of nothing but blanks for layout.
bool isXmlText(const std::string& text) {
    return utf8::is_valid(text.begin(), text.end()) && text.find('\0') == std::string::npos &&
           (text.empty() || text.find_first_not_of(' ') != std::string::npos);
}

}  // namespace

// The embedded server's encodings, there and back.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(textOf(data, size));
    require(fromBase64(base64(text)) == text, "base64 comes back");
    const auto bytes = fromBase64(text);
    require(!bytes || base64(*bytes) == text, "only canonical base64 is read");
    require(percentDecoded(percentEncoded(text)) == text, "percent-encoded text comes back");
    const std::string read = readBack(text);
    require(!isXmlText(text) || read == text, "text comes back from XML");
    return 0;
}
