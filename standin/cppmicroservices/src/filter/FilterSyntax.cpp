#include "filter/FilterSyntax.hpp"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <utility>

namespace cppmicroservices::detail {

namespace {

constexpr int maximumDepth = 64;
constexpr std::string_view whitespace = " \t\r\n";

std::optional<int> hexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return std::nullopt;
}

std::string trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(whitespace);
    if (first == std::string_view::npos) return {};
    return std::string(text.substr(first, text.find_last_not_of(whitespace) - first + 1));
}

/// The rules of RFC 4515, section 3, each a function. Blanks may stand around a filter and a name, and `\*`,
/// `\(`, `\)` and `\\` are understood beside the hexadecimal escapes, as the framework has it.
class FilterReader {
public:
    explicit FilterReader(std::string_view text) : text_(text) {}

    FilterNode whole() {
        FilterNode node = filter(1);
        if (position_ != text_.size()) fail("nothing may follow the filter");
        return node;
    }

private:
    FilterNode filter(int depth) {
        if (depth > maximumDepth) fail("too many filters lie in each other");
        skipBlanks();
        expect('(', "a filter begins with '('");
        skipBlanks();
        FilterNode node = component(depth);
        expect(')', "a filter ends with ')'");
        skipBlanks();
        return node;
    }

    FilterNode component(int depth) {
        if (skip('&')) return {FilterNode::Kind::And, operands(depth), {}, {}};
        if (skip('|')) return {FilterNode::Kind::Or, operands(depth), {}, {}};
        if (skip('!')) return {FilterNode::Kind::Not, {filter(depth + 1)}, {}, {}};
        return item();
    }

    std::vector<FilterNode> operands(int depth) {
        std::vector<FilterNode> all;
        do
            all.push_back(filter(depth + 1));
        while (peek() == '(');
        return all;
    }

    FilterNode item() {
        std::string attribute = name();
        std::vector<std::string> pieces = value();
        if (pieces.size() == 2 && pieces[0].empty() && pieces[1].empty())
            return {FilterNode::Kind::Present, {}, std::move(attribute), {}};
        return {FilterNode::Kind::Value, {}, std::move(attribute), std::move(pieces)};
    }

    std::string name() {
        const auto end = text_.find_first_of("=()<>~:*\\", position_);
        if (end == std::string_view::npos || text_[end] != '=') {
            position_ = std::min(end, text_.size());
            fail("a name is followed by '='; other comparisons aren't supported");
        }
        std::string result = trimmed(text_.substr(position_, end - position_));
        if (result.empty()) fail("a name is missing");
        position_ = end + 1;
        return result;
    }

    std::vector<std::string> value() {
        std::vector<std::string> pieces(1);
        for (; peek() != ')'; ++position_) {
            if (atEnd() || peek() == '(') fail("a value ends with ')'");
            if (peek() == '*')
                pieces.emplace_back();
            else
                pieces.back() += peek() == '\\' ? escaped() : peek();
        }
        return pieces;
    }

    // Leaves the position at the escape's last character.
    char escaped() {
        const std::string_view rest = text_.substr(position_ + 1);
        const auto high = rest.size() > 1 ? hexDigit(rest[0]) : std::nullopt;
        const auto low = rest.size() > 1 ? hexDigit(rest[1]) : std::nullopt;
        if (high && low) {
            position_ += 2;
            return static_cast<char>(*high * 16 + *low);
        }
        if (rest.empty() || std::string_view("*()\\").find(rest[0]) == std::string_view::npos)
            fail("'\\' is followed by two hexadecimal digits, or by one of *()\\");
        ++position_;
        return rest[0];
    }

    bool atEnd() const { return position_ == text_.size(); }
    char peek() const { return atEnd() ? '\0' : text_[position_]; }

    bool skip(char c) {
        if (atEnd() || text_[position_] != c) return false;
        ++position_;
        return true;
    }

    void skipBlanks() { position_ = std::min(text_.find_first_not_of(whitespace, position_), text_.size()); }

    void expect(char c, const char* rule) {
        if (!skip(c)) fail(rule);
    }

    [[noreturn]] void fail(const std::string& why) const {
        throw std::invalid_argument("filter '" + std::string(text_) + "': " + why + ", at character " +
                                    std::to_string(position_ + 1));
    }

    std::string_view text_;
    std::size_t position_ = 0;
};

}  // namespace

FilterNode parseFilter(std::string_view text) {
    return FilterReader(text).whole();
}

}  // namespace cppmicroservices::detail
