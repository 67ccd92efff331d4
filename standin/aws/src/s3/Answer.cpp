#include "s3/Answer.hpp"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace standin::aws::s3 {

using Aws::Utils::DateFormat;
using Aws::Utils::DateTime;

bool hasRoot(const Answer& answer, std::string_view name) {
    return answer.root() != nullptr && answer.root()->Name() == name;
}

std::string headerValue(const Headers& headers, const char* lowerCaseName) {
    const auto found = headers.find(lowerCaseName);
    return found == headers.end() ? std::string() : found->second;
}

DateTime headerDate(const Headers& headers, const char* lowerCaseName) {
    const auto found = headers.find(lowerCaseName);
    return found == headers.end() ? DateTime() : DateTime(found->second, DateFormat::RFC822);
}

Headers metadataIn(const Headers& headers) {
    constexpr std::string_view prefix = "x-amz-meta-";
    Headers metadata;
    for (auto header = headers.lower_bound(std::string(prefix));
         header != headers.end() && header->first.compare(0, prefix.size(), prefix) == 0; ++header) {
        metadata.emplace(header->first.substr(prefix.size()), header->second);
    }
    return metadata;
}

std::string_view needlessDocument(const Answer& answer) {
    return answer.root() == nullptr ? std::string_view() : "holds a document where none belongs";
}

long long leadingNumber(const std::string& text) {
    constexpr int decimal = 10;
    return std::strtoll(text.c_str(), nullptr, decimal);
}

bool isTrue(const std::string& text) {
    constexpr std::string_view expected = "true";
    return text == "1" || std::equal(text.begin(), text.end(), expected.begin(), expected.end(),
                                     [](char c, char lower) { return c == lower || c == lower - 'a' + 'A'; });
}

DateTime childDate(const tinyxml2::XMLElement* parent, const char* name) {
    const auto* found = child(parent, name);
    if (found == nullptr) return {};
    return {trimmed(decodedText(*found)), DateFormat::ISO_8601};
}

}  // namespace standin::aws::s3
