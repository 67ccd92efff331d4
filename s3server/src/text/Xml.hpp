#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace s3server {

/// Writes one document, without blanks between elements, as S3 does.
class XmlWriter {
public:
    XmlWriter();
    /// `attributes` are written as they are.
    XmlWriter& open(std::string_view name, std::string_view attributes = {});
    /// The root of S3's own documents, in their name space.
    XmlWriter& openRoot(std::string_view name);
    /// The same with nothing but text inside.
    XmlWriter& rootWithText(std::string_view name, std::string_view text);
    XmlWriter& element(std::string_view name, std::string_view text);
    XmlWriter& element(std::string_view name, std::uint64_t number);
    XmlWriter& flag(std::string_view name, bool value);
    XmlWriter& close();
    /// What was written; every element must have been closed.
    std::string document() const { return text_; }

private:
    std::string text_;
    std::vector<std::string> open_;
};

/// Markup and every character that a parser would change on reading, as references. What isn't UTF-8 becomes
/// U+FFFD.
std::string xmlEscaped(std::string_view text);

}  // namespace s3server
