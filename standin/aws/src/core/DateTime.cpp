#include <aws/core/utils/DateTime.h>

#include <array>
#include <cctype>
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

/// Takes a text apart from left to right. Each step says whether the text had what was asked for.
class Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) {}

    bool literal(std::string_view expected) {
        if (rest_.substr(0, expected.size()) != expected) return false;
        rest_.remove_prefix(expected.size());
        return true;
    }

    /// A number of `least` to `most` digits.
    bool digits(int& value, std::size_t least, std::size_t most) {
        const std::size_t count = countDigits(most);
        if (count < least) return false;
        value = 0;
        for (const char digit : rest_.substr(0, count))
            value = value * 10 + (digit - '0');
        rest_.remove_prefix(count);
        return true;
    }

    /// One of `names`, of three letters each; its place among them.
    template <std::size_t N>
    bool name(int& place, const std::array<std::string_view, N>& names) {
        for (std::size_t i = 0; i < N; ++i) {
            place = static_cast<int>(i);
            if (literal(names[i])) return true;
        }
        return false;
    }

    /// At least three digits, any number of them.
    bool fraction() {
        const std::size_t count = countDigits(rest_.size());
        rest_.remove_prefix(count);
        return count >= 3;
    }

    bool any() const { return !rest_.empty(); }

private:
    std::size_t countDigits(std::size_t most) const {
        std::size_t count = 0;
        while (count < most && count < rest_.size() &&
               std::isdigit(static_cast<unsigned char>(rest_[count]))) {
            ++count;
        }
        return count;
    }

    std::string_view rest_;
};

constexpr std::array<std::string_view, 7> weekdays = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array<std::string_view, 12> months = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

/// Two digits mean 1950 to 2049, as RFC 2822 reads them.
int fullYear(int year) {
    if (year >= 100) return year;
    return year + (year < 50 ? 2000 : 1900);
}

std::optional<std::tm> readRfc822(std::string_view text) {
    Reader reader(text);
    std::tm date{};
    const bool understood =
        reader.name(date.tm_wday, weekdays) && reader.literal(", ") && reader.digits(date.tm_mday, 1, 2) &&
        reader.literal(" ") && reader.name(date.tm_mon, months) && reader.literal(" ") &&
        reader.digits(date.tm_year, 2, 4) && reader.literal(" ") && reader.digits(date.tm_hour, 2, 2) &&
        reader.literal(":") && reader.digits(date.tm_min, 2, 2) && reader.literal(":") &&
        reader.digits(date.tm_sec, 2, 2) && reader.literal(" ") && reader.any();
    if (!understood) return std::nullopt;
    date.tm_year = fullYear(date.tm_year) - 1900;
    return date;
}

bool readZone(Reader& reader) {
    return reader.literal("Z") || reader.literal("+") || reader.literal("-");
}

/// Extended has "-" and ":" between the numbers, basic nothing.
std::optional<std::tm> readIso8601(std::string_view text, std::string_view dateMark,
                                   std::string_view timeMark) {
    Reader reader(text);
    std::tm date{};
    const bool understood =
        reader.digits(date.tm_year, 4, 4) && reader.literal(dateMark) && reader.digits(date.tm_mon, 2, 2) &&
        reader.literal(dateMark) && reader.digits(date.tm_mday, 2, 2) && reader.literal("T") &&
        reader.digits(date.tm_hour, 2, 2) && reader.literal(timeMark) && reader.digits(date.tm_min, 2, 2) &&
        reader.literal(timeMark) && reader.digits(date.tm_sec, 2, 2) &&
        (!reader.literal(".") || reader.fraction()) && readZone(reader);
    if (!understood) return std::nullopt;
    date.tm_year -= 1900;
    date.tm_mon -= 1;
    return date;
}

std::optional<std::tm> readAs(std::string_view text, DateFormat format) {
    switch (format) {
        case DateFormat::RFC822:
            return readRfc822(text);
        case DateFormat::ISO_8601:
            return readIso8601(text, "-", ":");
        case DateFormat::ISO_8601_BASIC:
            return readIso8601(text, "", "");
        case DateFormat::AutoDetect:
            break;
    }
    for (const DateFormat each : {DateFormat::RFC822, DateFormat::ISO_8601, DateFormat::ISO_8601_BASIC}) {
        if (auto date = readAs(text, each)) return date;
    }
    return std::nullopt;
}

/// The clock's nanoseconds end in the year 2262; what lies behind wraps around, as it does in the SDK.
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
