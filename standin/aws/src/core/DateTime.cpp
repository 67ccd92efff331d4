#include <aws/core/utils/DateTime.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <iomanip>
#include <locale>
#include <optional>
#include <sstream>
#include <string_view>

namespace Aws::Utils {
namespace {

using std::chrono::system_clock;

// A character's kind, whatever the locale.
constexpr std::string_view whiteSpace = " \t\n\v\f\r";

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

char lowerCase(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isLetter(char c) {
    return lowerCase(c) >= 'a' && lowerCase(c) <= 'z';
}

/// Takes a text apart from left to right. Each step says whether the text had what was asked for.
class Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) {}

    bool literal(std::string_view expected) {
        if (rest_.substr(0, expected.size()) != expected) return false;
        rest_.remove_prefix(expected.size());
        return true;
    }

    bool blank() {
        return take(1, 1, [](char c) { return whiteSpace.find(c) != std::string_view::npos; }).has_value();
    }

    /// A number of `least` to `most` digits, nine at most; none are 0.
    bool digits(int& value, std::size_t least, std::size_t most) {
        const auto taken = take(least, most, isDigit);
        value = 0;
        for (const char digit : taken.value_or(""))
            value = value * 10 + (digit - '0');
        return taken.has_value();
    }

    bool digits(std::size_t least, std::size_t most) { return take(least, most, isDigit).has_value(); }

    /// A word that begins with one of `names`, of three letters each, in any case; its place among them.
    template <std::size_t N>
    bool name(int& place, const std::array<std::string_view, N>& names) {
        const auto word = take(3, longestText, isLetter);
        if (!word) return false;
        const auto* const found = std::find_if(names.begin(), names.end(), [&](std::string_view name) {
            return std::equal(name.begin(), name.end(), word->begin(),
                              [](char a, char b) { return lowerCase(a) == lowerCase(b); });
        });
        place = static_cast<int>(found - names.begin());
        return found != names.end();
    }

    /// The characters of that kind that come next, `most` at most; nothing when they are fewer than `least`.
    template <typename Kind>
    std::optional<std::string_view> take(std::size_t least, std::size_t most, Kind isOfKind) {
        const auto* const end = std::find_if_not(rest_.begin(), rest_.end(), isOfKind);
        const auto count = std::min(static_cast<std::size_t>(end - rest_.begin()), most);
        if (count < least) return std::nullopt;
        const auto taken = rest_.substr(0, count);
        rest_.remove_prefix(count);
        return taken;
    }

    bool atEnd() const { return rest_.empty(); }

    static constexpr std::size_t longestText = 100;

private:
    std::string_view rest_;
};

constexpr std::array<std::string_view, 7> weekdays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array<std::string_view, 12> months = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

/// Four digits, or two that are of this century.
bool readYear(Reader& reader, int& year) {
    const auto digits = reader.take(2, 4, isDigit);
    if (!digits || digits->size() == 3) return false;
    Reader(*digits).digits(year, 2, 4);
    if (digits->size() == 2) year += 2000;
    return true;
}

/// Up to five letters, digits and signs. What they say doesn't count.
bool readZoneName(Reader& reader) {
    return reader.take(0, 5, [](char c) { return isLetter(c) || isDigit(c) || c == '+' || c == '-'; }) &&
           reader.atEnd();
}

std::optional<std::tm> readRfc822(std::string_view text) {
    Reader reader(text);
    std::tm date{};
    const bool understood =
        reader.name(date.tm_wday, weekdays) && reader.literal(",") && reader.blank() &&
        reader.digits(date.tm_mday, 0, 9) && reader.blank() && reader.name(date.tm_mon, months) &&
        reader.blank() && readYear(reader, date.tm_year) && reader.blank() &&
        reader.digits(date.tm_hour, 2, 2) && reader.literal(":") && reader.digits(date.tm_min, 2, 2) &&
        reader.literal(":") && reader.digits(date.tm_sec, 2, 2) && reader.blank() && readZoneName(reader);
    if (!understood) return std::nullopt;
    date.tm_year -= 1900;
    return date;
}

/// "Z" or a sign, and up to five digits and colons. What they say doesn't count.
bool readOffset(Reader& reader) {
    return (reader.literal("Z") || reader.literal("+") || reader.literal("-")) &&
           reader.take(0, 5, [](char c) { return isDigit(c) || c == ':'; }) && reader.atEnd();
}

/// How numbers are kept apart, and how a fraction of a second is written.
struct Iso8601Form {
    std::string_view dateMark;
    std::string_view timeMark;
    std::string_view fractionMark;
    std::size_t longestFraction;
};
constexpr Iso8601Form extended = {"-", ":", ".", 9};
constexpr Iso8601Form basic = {"", "", "", 3};

/// Nothing, or three digits at least.
bool readFraction(Reader& reader, const Iso8601Form& form) {
    if (!form.fractionMark.empty() && !reader.literal(form.fractionMark)) return true;
    return reader.digits(3, form.longestFraction) || form.fractionMark.empty();
}

std::optional<std::tm> readIso8601(std::string_view text, const Iso8601Form& form) {
    Reader reader(text);
    std::tm date{};
    const bool understood =
        reader.digits(date.tm_year, 4, 4) && reader.literal(form.dateMark) &&
        reader.digits(date.tm_mon, 2, 2) && reader.literal(form.dateMark) &&
        reader.digits(date.tm_mday, 2, 2) && reader.literal("T") && reader.digits(date.tm_hour, 2, 2) &&
        reader.literal(form.timeMark) && reader.digits(date.tm_min, 2, 2) && reader.literal(form.timeMark) &&
        reader.digits(date.tm_sec, 2, 2) && readFraction(reader, form) && readOffset(reader);
    if (!understood) return std::nullopt;
    date.tm_year -= 1900;
    date.tm_mon -= 1;
    return date;
}

std::optional<std::tm> readAs(std::string_view text, DateFormat format) {
    if (text.size() > Reader::longestText) return std::nullopt;
    switch (format) {
        case DateFormat::RFC822:
            return readRfc822(text);
        case DateFormat::ISO_8601:
            return readIso8601(text, extended);
        case DateFormat::ISO_8601_BASIC:
            return readIso8601(text, basic);
        case DateFormat::AutoDetect:
            break;
    }
    for (const DateFormat each : {DateFormat::RFC822, DateFormat::ISO_8601, DateFormat::ISO_8601_BASIC}) {
        if (auto date = readAs(text, each)) return date;
    }
    return std::nullopt;
}

/// The clock's nanoseconds end in the year 2262; later times wrap around, as it does in the SDK.
system_clock::time_point toTimePoint(std::tm date) {
    constexpr uint64_t ticksPerSecond = system_clock::period::den / system_clock::period::num;
    const auto ticks = static_cast<uint64_t>(timegm(&date)) * ticksPerSecond;
    return system_clock::time_point(system_clock::duration(static_cast<int64_t>(ticks)));
}

const char* textFormat(DateFormat format) {
    switch (format) {
        case DateFormat::RFC822:
            return "%a, %d %b %Y %H:%M:%S GMT";
        case DateFormat::ISO_8601_BASIC:
            return "%Y%m%dT%H%M%SZ";
        case DateFormat::ISO_8601:
        case DateFormat::AutoDetect:
            break;
    }
    return "%Y-%m-%dT%H:%M:%SZ";
}

}  // namespace

DateTime::DateTime(int64_t millisSinceEpoch) : time_(std::chrono::milliseconds(millisSinceEpoch)) {}

DateTime::DateTime(double secondsSinceEpoch)
    : DateTime(static_cast<int64_t>(std::llround(secondsSinceEpoch * 1000))) {}

DateTime::DateTime(const Aws::String& text, DateFormat format) {
    const auto date = readAs(text, format);
    valid_ = date.has_value();
    if (date) time_ = toTimePoint(*date);
}

DateTime::DateTime(const char* text, DateFormat format) : DateTime(Aws::String(text), format) {}

std::chrono::milliseconds DateTime::Diff(const DateTime& a, const DateTime& b) {
    return std::chrono::milliseconds(a.Millis() - b.Millis());
}

int64_t DateTime::Millis() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(time_.time_since_epoch()).count();
}

int64_t DateTime::Seconds() const {
    return std::chrono::duration_cast<std::chrono::seconds>(time_.time_since_epoch()).count();
}

double DateTime::SecondsWithMSPrecision() const {
    return static_cast<double>(Millis()) / 1000;
}

Aws::String DateTime::ToGmtString(DateFormat format) const {
    return ToGmtString(textFormat(format));
}

Aws::String DateTime::ToGmtString(const char* format) const {
    const std::time_t seconds = system_clock::to_time_t(time_);
    std::tm date{};
    gmtime_r(&seconds, &date);
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << std::put_time(&date, format);
    return text.str();
}

DateTime DateTime::operator+(std::chrono::milliseconds span) const {
    return time_ + span;
}

DateTime DateTime::operator-(std::chrono::milliseconds span) const {
    return time_ - span;
}

}  // namespace Aws::Utils
