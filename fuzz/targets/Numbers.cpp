#include <cstdint>
#include <limits>
#include <optional>
#include <stdexcept>

#include "FuzzTarget.hpp"
#include "NumberParsing.hpp"
#include "s3/Answer.hpp"
#include "text/Text.hpp"

using namespace fuzz;

namespace {

__extension__ using Wide = __int128;  // not ISO, but both compilers have it

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

/// A number as the C library reads it, digit by digit and without a bound below a hundred bits: blanks, a
/// sign, digits. Nothing without a digit.
std::optional<Wide> slowNumber(std::string_view text) {
    constexpr Wide enough = Wide{1} << 100;
    text = text.substr(0, text.find('\0'));
    text.remove_prefix(std::min(text.size(), text.find_first_not_of(" \t\n\v\f\r")));
    const bool negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
    if (text.empty() || !isDigit(text.front())) return std::nullopt;
    Wide value = 0;
    for (std::size_t i = 0; i < text.size() && isDigit(text[i]) && value < enough; ++i)
        value = value * 10 + (text[i] - '0');
    return negative ? -value : value;
}

template <class Number>
bool fits(Wide value) {
    return value >= std::numeric_limits<Number>::min() && value <= std::numeric_limits<Number>::max();
}

/// The plug-in's settings.
void checkSetting(const std::string& text, std::optional<Wide> expected) {
    try {
        const int read = storage::s3provider::parseInt(text);
        require(expected && read == *expected, "a number is read as it stands");
    } catch (const std::invalid_argument&) {
        require(!expected, "only text without digits is no number");
    } catch (const std::out_of_range&) {
        require(expected && !fits<int>(*expected), "only a large number is out of range");
    }
}

/// The SDK's headers.
void checkLength(const std::string& text, std::optional<Wide> expected) {
    using Limits = std::numeric_limits<long long>;
    const Wide within = std::min<Wide>(std::max<Wide>(expected.value_or(0), Limits::min()), Limits::max());
    require(standin::aws::s3::leadingNumber(text) == within, "a length stays inside its range");
}

/// The server's parameters: nothing but digits.
void checkParameter(const std::string& text, std::optional<Wide> expected) {
    const bool digitsOnly = text.find_first_not_of("0123456789") == std::string::npos;
    const bool readable = digitsOnly && expected && fits<std::uint64_t>(*expected);
    const auto read = s3server::parseNumber(text);
    require(read.has_value() == readable, "a parameter is digits and nothing else");
    require(!read || *read == *expected, "a parameter is read as it stands");
}

}  // namespace

// All readers of numbers against one slow reader.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(textOf(data, size));
    const auto expected = slowNumber(text);
    checkSetting(text, expected);
    checkLength(text, expected);
    checkParameter(text, expected);
    return 0;
}
