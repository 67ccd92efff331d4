#include "text/Dates.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>

#include "text/Text.hpp"

namespace s3server {
namespace {

using std::chrono::system_clock;

constexpr std::array<const char*, 7> weekdays{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::array<const char*, 12> months{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                             "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

std::tm utc(TimePoint time) {
    const std::time_t seconds = system_clock::to_time_t(time);
    std::tm fields{};
    gmtime_r(&seconds, &fields);
    return fields;
}

/// Reads fields of fixed place and width; remembers whether all of them were numbers in their bounds.
class FixedFields {
public:
    explicit FixedFields(std::string_view text) : text_(text) {}

    int number(std::size_t at, std::size_t width, int lowest, int highest) {
        const auto value = parseNumber(text_.substr(at, width));
        if (!value || static_cast<int>(*value) < lowest || static_cast<int>(*value) > highest) good_ = false;
        return good_ ? static_cast<int>(*value) : 0;
    }
    bool good() const { return good_; }

private:
    std::string_view text_;
    bool good_ = true;
};

/// `pattern` has a d for each digit and an a for each letter; every other character stands for itself.
bool hasForm(std::string_view text, std::string_view pattern) {
    return std::equal(text.begin(), text.end(), pattern.begin(), pattern.end(), [](char c, char form) {
        if (form == 'd') return c >= '0' && c <= '9';
        if (form == 'a') return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        return c == form;
    });
}

std::optional<int> monthNumber(std::string_view name) {
    const auto* const found = std::find(months.begin(), months.end(), name);
    if (found == months.end()) return std::nullopt;
    return static_cast<int>(found - months.begin());
}

/// The clock's nanoseconds end in the year 2262. A later date becomes the end of the year before: as far away
/// as can be with room left to add to it.
TimePoint timePoint(std::tm fields) {
    constexpr std::time_t latest = 9214646399;  // 2261-12-31T23:59:59Z
    return system_clock::from_time_t(std::min(timegm(&fields), latest));
}

}  // namespace

std::string httpDate(TimePoint time) {
    const std::tm at = utc(time);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%s, %02d %s %04d %02d:%02d:%02d GMT",
                  weekdays.at(static_cast<std::size_t>(at.tm_wday)), at.tm_mday,
                  months.at(static_cast<std::size_t>(at.tm_mon)), at.tm_year + 1900, at.tm_hour, at.tm_min,
                  at.tm_sec);
    return text.data();
}

std::optional<TimePoint> parseHttpDate(std::string_view text) {
    if (!hasForm(text, "aaa, dd aaa dddd dd:dd:dd GMT")) return std::nullopt;
    const auto month = monthNumber(text.substr(8, 3));
    FixedFields fields(text);
    std::tm at{};
    at.tm_mday = fields.number(5, 2, 1, 31);
    at.tm_mon = month.value_or(0);
    at.tm_year = fields.number(12, 4, 1970, 9999) - 1900;
    at.tm_hour = fields.number(17, 2, 0, 23);
    at.tm_min = fields.number(20, 2, 0, 59);
    at.tm_sec = fields.number(23, 2, 0, 60);
    if (!month || !fields.good()) return std::nullopt;
    return timePoint(at);
}

std::string xmlDate(TimePoint time) {
    const std::tm at = utc(time);
    const auto sinceEpoch = std::chrono::duration_cast<std::chrono::milliseconds>(time.time_since_epoch());
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d.%03dZ", at.tm_year + 1900,
                  at.tm_mon + 1, at.tm_mday, at.tm_hour, at.tm_min, at.tm_sec,
                  static_cast<int>(sinceEpoch.count() % 1000));
    return text.data();
}

std::optional<TimePoint> parseSigningDate(std::string_view text) {
    if (!hasForm(text, "ddddddddTddddddZ")) return std::nullopt;
    FixedFields fields(text);
    std::tm at{};
    at.tm_year = fields.number(0, 4, 1970, 9999) - 1900;
    at.tm_mon = fields.number(4, 2, 1, 12) - 1;
    at.tm_mday = fields.number(6, 2, 1, 31);
    at.tm_hour = fields.number(9, 2, 0, 23);
    at.tm_min = fields.number(11, 2, 0, 59);
    at.tm_sec = fields.number(13, 2, 0, 60);
    if (!fields.good()) return std::nullopt;
    return timePoint(at);
}

}  // namespace s3server
