#include <aws/core/utils/DateTime.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "support/process/Environment.hpp"

using Aws::Utils::DateFormat;
using Aws::Utils::DateTime;

namespace {

using Millis = std::optional<int64_t>;  // nothing: does not read
constexpr Millis unread;

struct Reading {
    const char* text;
    Millis rfc822;
    Millis iso8601;
    Millis any;
};

constexpr int64_t october21 = 1445412480000;

constexpr Reading readings[] = {
    {"Wed, 21 Oct 2015 07:28:00 GMT", october21, unread, october21},
    {"Wed, 21 Oct 2015 07:28:00 Z", october21, unread, october21},
    {"Wed, 21 Oct 15 07:28:00 GMT", october21, unread, october21},
    {"Wed, 1 Oct 2015 07:28:00 GMT", 1443684480000, unread, 1443684480000},
    {"Fri, 21 Oct 2015 07:28:00 GMT", october21, unread, october21},
    {"Wed, 32 Oct 2015 07:28:00 GMT", 1446362880000, unread, 1446362880000},
    {"Wed, 21 Oct 2015 07:28:00 EST", october21, unread, october21},
    {"Wed, 21 Oct 2015 09:28:00 +0200", 1445419680000, unread, 1445419680000},
    {"Thu, 01 Jan 1970 00:00:00 GMT", 0, unread, 0},
    {"Wed, 31 Dec 1969 23:59:59 GMT", -1000, unread, -1000},
    {"Wed, 31 Dec 69 23:59:59 GMT", 3155759999000, unread, 3155759999000},
    {"wed, 21 oct 2015 07:28:00 gmt", october21, unread, october21},
    {"WED, 21 OCT 2015 07:28:00 GMT", october21, unread, october21},
    {"Wednesday, 21 Oct 2015 07:28:00 GMT", october21, unread, october21},
    {"Wed, 21 October 2015 07:28:00 GMT", october21, unread, october21},
    {"Wedge, 21 Octopus 2015 07:28:00 GMT", october21, unread, october21},
    {"Wed,\t21\tOct\n2015\v07:28:00\fGMT", october21, unread, october21},
    {"Wed, 0021 Oct 2015 07:28:00 GMT", october21, unread, october21},
    {"Wed, 21 Oct 0001 07:28:00 GMT", -6770022498871, unread, -6770022498871},
    {"Wed, 21 Oct 2015 07:28:00 GMT+1", october21, unread, october21},
    {"Wed, 21 Oct 2015 07:28:00 GMT+10", unread, unread, unread},
    {"Wed, 21 Oct 2015 07:28:00 GMT junk", unread, unread, unread},
    {"Wed, 21 Oct 2015 07:28:00 +02:00", unread, unread, unread},
    {"Wed, 21 Oct 015 07:28:00 GMT", unread, unread, unread},
    {"Wed, 21 Oct 20155 07:28:00 GMT", unread, unread, unread},
    {"Wed,  21 Oct 2015 07:28:00 GMT", unread, unread, unread},
    {"We, 21 Oct 2015 07:28:00 GMT", unread, unread, unread},
    {"Wed7, 21 Oct 2015 07:28:00 GMT", unread, unread, unread},
    {" Wed, 21 Oct 2015 07:28:00 GMT", unread, unread, unread},
    {"Sun, 06 Feb 2106 06:28:16 GMT", 4294880896000, unread, 4294880896000},
    {"Wed, 21 Xyz 2015 07:28:00 GMT", unread, unread, unread},
    {"Wed, 21 Oct 2015 07:28:00", unread, unread, unread},
    {"Wed, 21 Oct 2015 07:28:00 ", october21, unread, october21},
    {"Wednesday, 21-Oct-15 07:28:00 GMT", unread, unread, unread},
    {"Wed Oct 21 07:28:00 2015", unread, unread, unread},
    {"21 Oct 2015 07:28:00 GMT", unread, unread, unread},
    {"2015-10-21T07:28:00Z", unread, october21, october21},
    {"2015-10-21T07:28:00.250Z", unread, october21, october21},
    {"2015-10-21T07:28:00.123456789Z", unread, october21, october21},
    {"2015-10-21T07:28:00+01:00", unread, october21, october21},
    {"2015-10-21T07:28:00-", unread, october21, october21},
    {"2015-10-21T07:28:00+01:000", unread, unread, unread},
    {"2015-10-21T07:28:00.1234567890Z", unread, unread, unread},
    {"2015-10-21T07:28:00.000Z ", unread, unread, unread},
    {"2015-10-21T07:28:00.000Zjunk", unread, unread, unread},
    {"2015-10-21T07:28:00Z\n2", unread, unread, unread},
    {"2015-10-21t07:28:00Z", unread, unread, unread},
    {"2015-13-21T07:28:00Z", unread, 1453361280000, 1453361280000},
    {"1970-01-01T00:00:00Z", unread, 0, 0},
    {"1969-12-31T23:59:59Z", unread, -1000, -1000},
    {"2100-02-28T23:59:59.999Z", unread, 4107542399000, 4107542399000},
    {"9999-12-31T23:59:59Z", unread, -4852116232933, -4852116232933},
    {"2015-10-21T07:28:00.1Z", unread, unread, unread},
    {"2015-10-21T07:28:00", unread, unread, unread},
    {"2015-10-21T07:28Z", unread, unread, unread},
    {"2015-10-21", unread, unread, unread},
    {"20151021T072800Z", unread, unread, october21},
    {"20151021T072800123Z", unread, unread, october21},
    {"20151021T07280012Z", unread, unread, unread},
    {"20151021T0728001234Z", unread, unread, unread},
    {"20151021T072800Z ", unread, unread, unread},
    {"1445412480", unread, unread, unread},
    {"x", unread, unread, unread},
    {"", unread, unread, unread},
};

class DateText : public ::testing::TestWithParam<Reading> {};

Millis read(const char* text, DateFormat format) {
    const DateTime time(text, format);
    if (time.WasParseSuccessful()) return time.Millis();
    EXPECT_EQ(time.Millis(), 0);
    return std::nullopt;
}

TEST_P(DateText, ReadsAsItsFormatSays) {
    const Reading& reading = GetParam();
    EXPECT_EQ(read(reading.text, DateFormat::RFC822), reading.rfc822) << reading.text;
    EXPECT_EQ(read(reading.text, DateFormat::ISO_8601), reading.iso8601) << reading.text;
    EXPECT_EQ(read(reading.text, DateFormat::AutoDetect), reading.any) << reading.text;
}

INSTANTIATE_TEST_SUITE_P(DateTime, DateText, ::testing::ValuesIn(readings));

TEST(DateTime, IsReadFromAHundredCharactersAtMost) {
    const std::string zone = " 2015 07:28:00 GMT";
    const auto withMonthOf = [&](std::size_t letters) {
        return "Wed, 21 Oct" + std::string(letters - 3, 'o') + zone;
    };
    const std::size_t fits = 100 - std::string("Wed, 21 ").size() - zone.size();
    EXPECT_EQ(read(withMonthOf(fits).c_str(), DateFormat::RFC822), october21);
    EXPECT_EQ(read(withMonthOf(fits + 1).c_str(), DateFormat::RFC822), unread);
}

TEST(DateTime, TakesEveryZoneForUtcWhereverTheMachineIs) {
    const testsupport::Environment machine{{"TZ", "EST5"}};
    EXPECT_EQ(read("Wed, 21 Oct 2015 07:28:00 EST", DateFormat::RFC822), october21);
    EXPECT_EQ(read("2015-10-21T07:28:00+01:00", DateFormat::ISO_8601), october21);
}

TEST(DateTime, IsTheEpochAndReadWellByDefault) {
    EXPECT_EQ(DateTime().Millis(), 0);
    EXPECT_TRUE(DateTime().WasParseSuccessful());
}

TEST(DateTime, TellsMillisecondsAndSeconds) {
    const DateTime time(int64_t{1445412480250});
    EXPECT_EQ(time.Millis(), 1445412480250);
    EXPECT_EQ(time.Seconds(), 1445412480);
    EXPECT_DOUBLE_EQ(time.SecondsWithMSPrecision(), 1445412480.25);
    EXPECT_EQ(DateTime(1445412480.25).Millis(), 1445412480250);
}

TEST(DateTime, IsWrittenInEachFormat) {
    const DateTime time(october21);
    EXPECT_EQ(time.ToGmtString(DateFormat::RFC822), "Wed, 21 Oct 2015 07:28:00 GMT");
    EXPECT_EQ(time.ToGmtString(DateFormat::ISO_8601), "2015-10-21T07:28:00Z");
    EXPECT_EQ(time.ToGmtString(DateFormat::ISO_8601_BASIC), "20151021T072800Z");
    EXPECT_EQ(time.ToGmtString("%Y%m%d"), "20151021");
}

TEST(DateTime, ReadsBackWhatItWrites) {
    const DateTime time(october21);
    for (const DateFormat format : {DateFormat::RFC822, DateFormat::ISO_8601, DateFormat::ISO_8601_BASIC}) {
        EXPECT_EQ(DateTime(time.ToGmtString(format), format), time);
    }
}

TEST(DateTime, ComparesAndCountsInMilliseconds) {
    const DateTime early(int64_t{1000});
    const DateTime late = early + std::chrono::milliseconds(1500);
    EXPECT_LT(early, late);
    EXPECT_EQ(late - std::chrono::milliseconds(1500), early);
    EXPECT_EQ(DateTime::Diff(late, early).count(), 1500);
    EXPECT_EQ(DateTime::Diff(early, late).count(), -1500);
}

}  // namespace
