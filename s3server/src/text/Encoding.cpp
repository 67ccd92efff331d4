#include "text/Encoding.hpp"

#include <openssl/evp.h>

#include <algorithm>

namespace s3server {
namespace {

constexpr std::string_view lowerDigits = "0123456789abcdef";
constexpr std::string_view upperDigits = "0123456789ABCDEF";

bool isAlphanumeric(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

void appendPercent(std::string& text, char c) {
    const auto byte = static_cast<unsigned char>(c);
    text += '%';
    text += upperDigits[byte >> 4U];
    text += upperDigits[byte & 15U];
}

std::string encodedExcept(std::string_view text, std::string_view kept) {
    std::string result;
    for (const char c : text) {
        if (isAlphanumeric(c) || kept.find(c) != std::string_view::npos)
            result += c;
        else
            appendPercent(result, c);
    }
    return result;
}

std::optional<unsigned> digitValue(char c) {
    if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
    if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a' + 10);
    if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A' + 10);
    return std::nullopt;
}

const unsigned char* unsignedData(std::string_view text) {
    return reinterpret_cast<const unsigned char*>(text.data());
}

}  // namespace

std::string hex(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += lowerDigits[byte >> 4U];
        text += lowerDigits[byte & 15U];
    }
    return text;
}

std::string base64(std::string_view bytes) {
    std::string text((bytes.size() + 2) / 3 * 4 + 1, '\0');
    const int length = EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()), unsignedData(bytes),
                                       static_cast<int>(bytes.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::optional<std::string> fromBase64(std::string_view text) {
    const auto padding = text.size() - std::min(text.size(), text.find_last_not_of('=') + 1);
    std::string bytes(text.size() / 4 * 3, '\0');
    const int length = EVP_DecodeBlock(reinterpret_cast<unsigned char*>(bytes.data()), unsignedData(text),
                                       static_cast<int>(text.size()));
    if (length < 0 || padding > 2 || text.size() % 4 != 0) return std::nullopt;
    bytes.resize(static_cast<std::size_t>(length) - padding);
    // The decoder forgives blanks around the text and bits that no encoder sets.
    if (base64(bytes) != text) return std::nullopt;
    return bytes;
}

std::string percentEncoded(std::string_view text, std::string_view kept) {
    return encodedExcept(text, std::string("-_.~").append(kept));
}

std::optional<std::string> percentDecoded(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            result += text[i];
            continue;
        }
        if (text.size() - i < 3) return std::nullopt;
        const auto high = digitValue(text[i + 1]);
        const auto low = digitValue(text[i + 2]);
        if (!high || !low) return std::nullopt;
        result += static_cast<char>(*high << 4U | *low);
        i += 2;
    }
    return result;
}

std::optional<std::string> queryDecoded(std::string_view text) {
    std::string blanks(text);
    std::replace(blanks.begin(), blanks.end(), '+', ' ');
    return percentDecoded(blanks);
}

std::string listingEncoded(std::string_view text) {
    std::string result = encodedExcept(text, "-_.*/ ");
    std::replace(result.begin(), result.end(), ' ', '+');
    return result;
}

}  // namespace s3server
