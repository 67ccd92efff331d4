#include "text/Xml.hpp"

#include <utf8.h>

namespace s3server {

XmlWriter::XmlWriter() : text_("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n") {}

XmlWriter& XmlWriter::open(std::string_view name, std::string_view attributes) {
    text_.append("<").append(name).append(attributes.empty() ? "" : " ").append(attributes).append(">");
    open_.emplace_back(name);
    return *this;
}

XmlWriter& XmlWriter::openRoot(std::string_view name) {
    return open(name, "xmlns=\"http://s3.amazonaws.com/doc/2006-03-01/\"");
}

XmlWriter& XmlWriter::rootWithText(std::string_view name, std::string_view text) {
    openRoot(name);
    text_ += xmlEscaped(text);
    return close();
}

XmlWriter& XmlWriter::element(std::string_view name, std::string_view text) {
    if (text.empty()) {
        text_.append("<").append(name).append("/>");
        return *this;
    }
    open(name);
    text_ += xmlEscaped(text);
    return close();
}

XmlWriter& XmlWriter::element(std::string_view name, std::uint64_t number) {
    return element(name, std::to_string(number));
}

XmlWriter& XmlWriter::flag(std::string_view name, bool value) {
    return element(name, value ? "true" : "false");
}

XmlWriter& XmlWriter::close() {
    text_.append("</").append(open_.back()).append(">");
    open_.pop_back();
    return *this;
}

std::string xmlEscaped(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (const char c : utf8::replace_invalid(text)) {
        const auto byte = static_cast<unsigned char>(c);
        switch (c) {
            case '&':
                result += "&amp;";
                break;
            case '<':
                result += "&lt;";
                break;
            case '>':
                result += "&gt;";
                break;
            case '"':
                result += "&quot;";
                break;
            default:
                if (byte < 0x20 || byte == 0x7f)
                    result.append("&#").append(std::to_string(byte)).append(";");
                else
                    result += c;
        }
    }
    return result;
}

}  // namespace s3server
