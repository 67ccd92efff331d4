#include "log/Escape.hpp"

#include <utf8.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace foundation::log {

namespace {

struct Range {
    char32_t first;
    char32_t last;
};

constexpr std::array<Range, 5> hidden{{
    {0x00, 0x1F},
    {0x7F, 0x9F},
    {0x2028, 0x2029},  // line and paragraph separator
    {0x202A, 0x202E},  // bidirectional embeddings and overrides
    {0x2066, 0x2069},  // bidirectional isolates
}};

bool isHidden(char32_t c) {
    return std::any_of(hidden.begin(), hidden.end(), [c](Range r) { return r.first <= c && c <= r.last; });
}

std::string hex(char32_t value, std::size_t digits) {
    constexpr std::string_view alphabet = "0123456789ABCDEF";
    std::string text(digits, '0');
    for (auto digit = text.rbegin(); digit != text.rend(); ++digit, value >>= 4)
        *digit = alphabet[value & 0xF];
    return text;
}

std::string escapeOf(char32_t c) {
    if (c == U'\\') return "\\\\";
    if (c == U'\n') return "\\n";
    if (c == U'\r') return "\\r";
    if (c == U'\t') return "\\t";
    return c < 0x80 ? "\\x" + hex(c, 2) : "\\u" + hex(c, 4);
}

void appendWellFormed(std::string& out, std::string_view text) {
    for (auto next = text.begin(); next != text.end();) {
        const auto start = next;
        const char32_t c = utf8::unchecked::next(next);
        if (c == U'\\' || isHidden(c)) {
            out += escapeOf(c);
        } else {
            out.append(start, next);
        }
    }
}

}  // namespace

std::string escaped(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const auto wellFormed =
            static_cast<std::size_t>(utf8::find_invalid(text.begin(), text.end()) - text.begin());
        appendWellFormed(out, text.substr(0, wellFormed));
        text.remove_prefix(wellFormed);
        if (text.empty()) break;
        out += "\\x" + hex(static_cast<unsigned char>(text.front()), 2);
        text.remove_prefix(1);
    }
    return out;
}

}  // namespace foundation::log
