#include "UrlDecode.hpp"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <locale>
#include <sstream>
#include <string_view>

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

constexpr auto notFound = std::string_view::npos;

void replaceAll(std::string& text, char from, char to) {
    const std::string_view view = text;
    for (auto place = view.find(from); place != notFound; place = view.find(from, place + 1))
        text[place] = to;
}

// `first` is where the first "%" stands.
void decodePercentSequences(std::string& text, std::size_t first) {
    const std::string_view view = text;
    std::size_t written = first;
    for (std::size_t read = first; read < text.size();) {
        const bool isSequence = text.size() - read >= 3;
        text[written++] = isSequence ? decodeByte(text[read + 1], text[read + 2]) : '%';
        read += isSequence ? 3 : 1;
        const std::size_t literal = std::min(view.find('%', read), text.size()) - read;
        std::memmove(text.data() + written, text.data() + read, literal);
        written += literal;
        read += literal;
    }
    text.resize(written);
}

}  // namespace

std::string urlDecode(std::string text) {
    // Before any percent sequence is decoded, so that an encoded plus stays a plus.
    replaceAll(text, '+', ' ');
    const auto first = std::string_view(text).find('%');
    if (first != notFound) decodePercentSequences(text, first);
    return text;
}

}  // namespace storage::s3provider
