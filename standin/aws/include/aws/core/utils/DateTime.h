#pragma once

#include <aws/core/utils/memory/stl/AWSString.h>

#include <chrono>
#include <cstdint>

namespace Aws::Utils {

enum class DateFormat {
    RFC822,          ///< "Wed, 21 Oct 2015 07:28:00 GMT"
    ISO_8601,        ///< "2015-10-21T07:28:00Z"
    ISO_8601_BASIC,  ///< "20151021T072800Z"
    AutoDetect       ///< for reading: the first of the above that fits
};

/// A moment, with nanoseconds kept and milliseconds shown.
///
/// Reading is lenient where services are careless: names count by their first three letters in any case, any
/// white space is a blank, zones are taken for UTC whatever they say, a fraction of a second is dropped (and
/// must have three digits or more), days and months past their end count on into the next. Nothing may
/// follow. A text that doesn't read, or has more than 100 characters, is 1970-01-01T00:00:00Z with
/// WasParseSuccessful() false.
class DateTime {
public:
    /// 1970-01-01T00:00:00Z.
    DateTime() = default;
    DateTime(std::chrono::system_clock::time_point time)
        : time_(time) {}                 // NOLINT(google-explicit-constructor)
    DateTime(int64_t millisSinceEpoch);  // NOLINT(google-explicit-constructor)
    /// Seconds since the epoch, with a fraction.
    DateTime(double secondsSinceEpoch);  // NOLINT(google-explicit-constructor)
    DateTime(const Aws::String& text, DateFormat format);
    DateTime(const char* text, DateFormat format);

    static DateTime Now() { return std::chrono::system_clock::now(); }
    static int64_t CurrentTimeMillis() { return Now().Millis(); }
    static Aws::String CalculateGmtTimestampAsString(const char* format) { return Now().ToGmtString(format); }
    /// `a` minus `b`.
    static std::chrono::milliseconds Diff(const DateTime& a, const DateTime& b);

    bool WasParseSuccessful() const { return valid_; }

    int64_t Millis() const;
    int64_t Seconds() const;
    double SecondsWithMSPrecision() const;
    std::chrono::system_clock::time_point UnderlyingTimestamp() const { return time_; }

    Aws::String ToGmtString(DateFormat format) const;
    /// `format` is strftime's.
    Aws::String ToGmtString(const char* format) const;

    bool operator==(const DateTime& other) const { return time_ == other.time_; }
    bool operator!=(const DateTime& other) const { return time_ != other.time_; }
    bool operator<(const DateTime& other) const { return time_ < other.time_; }
    bool operator>(const DateTime& other) const { return time_ > other.time_; }
    bool operator<=(const DateTime& other) const { return time_ <= other.time_; }
    bool operator>=(const DateTime& other) const { return time_ >= other.time_; }
    DateTime operator+(std::chrono::milliseconds span) const;
    DateTime operator-(std::chrono::milliseconds span) const;

private:
    std::chrono::system_clock::time_point time_{};
    bool valid_ = true;
};

}  // namespace Aws::Utils
