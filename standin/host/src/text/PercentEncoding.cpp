#include "text/PercentEncoding.hpp"

#include <uriparser/Uri.h>

#include <cstddef>

namespace standin {

namespace {

bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

}  // namespace

std::string percentDecoded(std::string_view text) {
    std::string decoded(text);
    const char* const end = uriUnescapeInPlaceExA(decoded.data(), URI_FALSE, URI_BR_DONT_TOUCH);
    decoded.resize(static_cast<std::size_t>(end - decoded.data()));
    return decoded;
}

std::string percentEncoded(std::string_view plain, std::string_view marks) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : plain) {
        const auto byte = static_cast<unsigned char>(c);
        if (isLetterOrDigit(c) || marks.find(c) != marks.npos)
            encoded += c;
        else
            encoded += {'%', digits[byte >> 4U], digits[byte & 0xFU]};
    }
    return encoded;
}

}  // namespace standin
