#include "filter/ValueMatch.hpp"

#include "services/PropertyNames.hpp"

#include <algorithm>
#include <locale>
#include <sstream>
#include <string_view>
#include <type_traits>

namespace cppmicroservices::detail {

namespace {

using Pieces = std::vector<std::string>;

bool textMatches(std::string_view text, const Pieces& pieces) {
    if (pieces.size() == 1) return text == pieces[0];
    if (text.substr(0, pieces.front().size()) != pieces.front()) return false;
    std::size_t position = pieces.front().size();
    for (auto piece = pieces.begin() + 1; piece != pieces.end() - 1; ++piece) {
        const auto found = text.find(*piece, position);
        if (found == std::string_view::npos) return false;
        position = found + piece->size();
    }
    const std::string& last = pieces.back();
    return text.size() - position >= last.size() && text.substr(text.size() - last.size()) == last;
}

bool truthMatches(bool value, const Pieces& pieces) {
    return pieces.size() == 1 && equalIgnoringCase(pieces[0], value ? "true" : "false");
}

template <class Number>
bool numberMatches(Number value, const Pieces& pieces) {
    std::stringstream text;
    text.imbue(std::locale::classic());
    if (pieces.size() > 1) {
        text << value;
        return textMatches(text.str(), pieces);
    }
    Number wanted{};
    text << pieces[0];
    return text >> std::noskipws >> wanted && text.peek() == std::stringstream::traits_type::eof() &&
           value == wanted;
}

template <class Value>
bool anyMatches(const std::vector<Value>& values, const Pieces& pieces) {
    return std::any_of(values.begin(), values.end(),
                       [&pieces](const Value& value) { return valueMatches(value, pieces); });
}

template <class Value>
bool matchesAs(const Value& value, const Pieces& pieces) {
    if constexpr (std::is_same_v<Value, std::string>)
        return textMatches(value, pieces);
    else if constexpr (std::is_same_v<Value, bool>)
        return truthMatches(value, pieces);
    else if constexpr (std::is_arithmetic_v<Value>)
        return numberMatches(value, pieces);
    else
        return anyMatches(value, pieces);
}

template <class... Types>
bool matchesAsOneOf(const Any& value, const Pieces& pieces) {
    const auto matches = [&pieces](const auto* held) { return held && matchesAs(*held, pieces); };
    return (matches(any_cast<Types>(&value)) || ...);
}

}  // namespace

bool valueMatches(const Any& value, const Pieces& pieces) {
    return matchesAsOneOf<std::string, bool, int, unsigned, long, unsigned long, long long,
                          unsigned long long, double, std::vector<std::string>, std::vector<Any>>(value,
                                                                                                  pieces);
}

}  // namespace cppmicroservices::detail
