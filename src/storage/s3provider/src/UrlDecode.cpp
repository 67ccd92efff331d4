#include "UrlDecode.hpp"

#include <algorithm>
#include <cstddef>
#include <locale>
#include <sstream>

namespace storage::s3provider {

namespace {

constexpr int notHexadecimal = -1;

int hexadecimalDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return notHexadecimal;
}

int readAsHexadecimal(const std::string& text) {
    std::istringstream in(text);
    in.imbue(std::locale::classic());
    int value = 0;
    in >> std::hex >> value;
    return value;
}

char decodeByte(char first, char second) {
    const int high = hexadecimalDigit(first);
    const int low = hexadecimalDigit(second);
    if (high != notHexadecimal && low != notHexadecimal) return static_cast<char>(high * 16 + low);
    return static_cast<char>(readAsHexadecimal({first, second}));
}

}  // namespace

std::string urlDecode(std::string text) {
    // Before any percent sequence is decoded, so that an encoded plus stays a plus.
    std::replace(text.begin(), text.end(), '+', ' ');
    std::size_t written = 0;
    for (std::size_t position = 0; position < text.size(); ++written) {
        if (text[position] == '%' && text.size() - position >= 3) {
            text[written] = decodeByte(text[position + 1], text[position + 2]);
            position += 3;
        } else {
            text[written] = text[position];
            position += 1;
        }
    }
    text.resize(written);
    return text;
}

}  // namespace storage::s3provider
