#include "fl/i18n.hpp"

#include <utf8.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iterator>

namespace fl::i18n {

namespace {

static_assert(sizeof(wchar_t) == 4, "wide text is UTF-32 here");

constexpr bool isLeadSurrogate(char16_t c) {
    return c >= 0xD800 && c <= 0xDBFF;
}
constexpr bool isTrailSurrogate(char16_t c) {
    return c >= 0xDC00 && c <= 0xDFFF;
}

/// The index of the first surrogate without its partner; the text's length if there is none.
std::size_t findLoneSurrogate(const std::u16string& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isTrailSurrogate(text[i])) return i;
        if (!isLeadSurrogate(text[i])) continue;
        if (i + 1 == text.size() || !isTrailSurrogate(text[i + 1])) return i;
        ++i;
    }
    return text.size();
}

void requireWellFormed(const std::u16string& text) {
    const std::size_t offset = findLoneSurrogate(text);
    if (offset == text.size()) return;
    throw conversion_error("ill-formed UTF-16: a lone surrogate at code unit " + std::to_string(offset) +
                           " of " + std::to_string(text.size()));
}

void requireWellFormed(const std::string& text) {
    const auto invalid = utf8::find_invalid(text.begin(), text.end());
    if (invalid == text.end()) return;
    throw conversion_error("ill-formed UTF-8 at byte " + std::to_string(invalid - text.begin()) + " of " +
                           std::to_string(text.size()));
}

constexpr bool isCodePoint(wchar_t c) {
    return (c >= 0 && c < 0xD800) || (c > 0xDFFF && c <= 0x10FFFF);
}

void requireWellFormed(const std::wstring& text) {
    const auto invalid = std::find_if_not(text.begin(), text.end(), isCodePoint);
    if (invalid == text.end()) return;
    throw conversion_error("ill-formed wide text: no code point at character " +
                           std::to_string(invalid - text.begin()) + " of " + std::to_string(text.size()));
}

std::u16string wellFormedToUtf16(const std::string& text) {
    std::u16string converted;
    utf8::unchecked::utf8to16(text.begin(), text.end(), std::back_inserter(converted));
    return converted;
}

}  // namespace

std::u16string getenv(const std::string& name) {
    const char* const value = std::getenv(name.c_str());  // NOLINT(concurrency-mt-unsafe): see the contract
    if (value == nullptr) return {};
    const std::string bytes(value);
    std::string repaired;
    utf8::replace_invalid(bytes.begin(), bytes.end(), std::back_inserter(repaired));
    return wellFormedToUtf16(repaired);
}

std::string to_string(const std::u16string& text) {
    return ustring_to_utf8(text);
}

std::string ustring_to_utf8(const std::u16string& text) {
    requireWellFormed(text);
    std::string converted;
    utf8::unchecked::utf16to8(text.begin(), text.end(), std::back_inserter(converted));
    return converted;
}

std::u16string to_ustring(const char* text) {
    return to_ustring(std::string(text));
}

std::u16string to_ustring(const std::string& text) {
    requireWellFormed(text);
    return wellFormedToUtf16(text);
}

std::u16string to_ustring(const std::wstring& text) {
    requireWellFormed(text);
    std::string utf8Text;
    utf8::unchecked::utf32to8(text.begin(), text.end(), std::back_inserter(utf8Text));
    return wellFormedToUtf16(utf8Text);
}

std::wstring to_wstring(const std::u16string& text) {
    const std::string narrow = ustring_to_utf8(text);
    std::wstring converted;
    utf8::unchecked::utf8to32(narrow.begin(), narrow.end(), std::back_inserter(converted));
    return converted;
}

}  // namespace fl::i18n
