#include "messages/Text.hpp"

#include <utf8.h>

#include <algorithm>
#include <boost/date_time/posix_time/posix_time.hpp>
#include <iterator>

namespace s3vfs {

namespace {

struct CodePoints {
    char32_t first;
    char32_t last;
};

constexpr CodePoints harmful[] = {
    {0x00, 0x1F},     {0x7F, 0x9F}, {0x2028, 0x2029},  // line and paragraph separator
    {0x202A, 0x202E},                                  // embeddings and overrides of direction
    {0x2066, 0x2069},                                  // isolates of direction
};

bool isHarmful(char32_t codePoint) {
    return std::any_of(std::begin(harmful), std::end(harmful), [codePoint](const CodePoints& range) {
        return range.first <= codePoint && codePoint <= range.last;
    });
}

std::string escaped(const std::string& bytes) {
    constexpr const char* digits = "0123456789abcdef";
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += {'\\', 'x', digits[byte / 16], digits[byte % 16]};
    }
    return text;
}

/// Of well-formed UTF-8.
std::string withoutHarm(const std::string& text) {
    std::string line;
    for (auto next = text.begin(); next != text.end();) {
        const auto start = next;
        const bool harms = isHarmful(utf8::unchecked::next(next));
        const std::string character(start, next);
        line += harms ? escaped(character) : character;
    }
    return line;
}

}  // namespace

std::string printable(const std::string& text) {
    std::string line;
    auto rest = text.begin();
    while (true) {
        const auto invalid = utf8::find_invalid(rest, text.end());
        line += withoutHarm({rest, invalid});
        if (invalid == text.end()) return line;
        line += escaped({*invalid});
        rest = invalid + 1;
    }
}

std::string timestamp(const boost::posix_time::ptime& time) {
    return time.is_special() ? "-" : boost::posix_time::to_iso_extended_string(time) + "Z";
}

}  // namespace s3vfs
