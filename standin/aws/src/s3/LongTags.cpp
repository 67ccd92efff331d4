#include "s3/LongTags.hpp"

#include <array>

namespace standin::aws::s3 {

namespace {

constexpr std::size_t longestTag = 4096;
constexpr auto none = std::string_view::npos;

struct Markup {
    std::string_view begin;
    std::string_view end;
};
// What looks like a tag and isn't one, in the order in which tinyxml2 tries it.
constexpr std::array otherMarkup{Markup{"<?", "?>"}, Markup{"<!--", "-->"}, Markup{"<![CDATA[", "]]>"},
                                 Markup{"<!", ">"}};

const Markup* findOtherMarkup(std::string_view text) {
    if (text.size() < 2 || (text[1] != '?' && text[1] != '!')) return nullptr;
    for (const Markup& markup : otherMarkup)
        if (text.substr(0, markup.begin.size()) == markup.begin) return &markup;
    return nullptr;
}

/// Where the tag that the text begins with ends: a ">" in quotes doesn't end it. Nearly every tag has no
/// quotes.
std::size_t endOfTag(std::string_view text) {
    const std::size_t first = text.find('>');
    const auto before = text.substr(0, first);
    if (before.find('"') == none && before.find('\'') == none) return first;

    constexpr std::string_view outside = "\"'>";
    std::size_t at = text.find_first_of(outside);
    while (at != none && text[at] != '>') {
        const std::size_t closing = text.find(text[at], at + 1);
        at = closing == none ? none : text.find_first_of(outside, closing + 1);
    }
    return at;
}

}  // namespace

std::string_view cutInLongTag(std::string_view text) {
    std::size_t end = 0;
    for (std::size_t at = text.find('<'); at != none; at = text.find('<', end)) {
        const auto rest = text.substr(at);
        const Markup* const other = findOtherMarkup(rest);
        // Looked for no farther than it may reach, so that quotes that don't close cost nothing.
        const std::size_t length = other != nullptr ? rest.find(other->end, other->begin.size())
                                                    : endOfTag(rest.substr(0, longestTag));
        if (length == none) return other != nullptr ? text : text.substr(0, at + longestTag);
        end = at + length;
    }
    return text;
}

}  // namespace standin::aws::s3
