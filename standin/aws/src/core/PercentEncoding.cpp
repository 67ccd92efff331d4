#include "core/PercentEncoding.hpp"

namespace standin::aws {
namespace {

constexpr bool isUnreserved(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_' || c == '.' || c == '~';
}

std::string encode(std::string_view text, std::string_view alsoKept) {
    constexpr std::string_view hex = "0123456789ABCDEF";
    std::string out;
    out.reserve(text.size());
    for (const char c : text) {
        if (isUnreserved(c) || alsoKept.find(c) != std::string_view::npos) {
            out += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            out += {'%', hex[byte >> 4], hex[byte & 15]};
        }
    }
    return out;
}

}  // namespace

std::string encodeQueryText(std::string_view text) {
    return encode(text, "");
}

std::string encodeWirePath(std::string_view path) {
    return encode(path, "/$&,:=@");
}

std::string encodePathSegment(std::string_view segment) {
    return encode(segment, "$&,:=@");
}

std::string encodeCanonicalPath(std::string_view path) {
    return encode(path, "/");
}

}  // namespace standin::aws
