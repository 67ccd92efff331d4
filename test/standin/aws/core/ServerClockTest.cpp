#include "core/ServerClock.hpp"

#include <gtest/gtest.h>

using namespace standin::aws;
using Aws::Utils::DateFormat;
using Aws::Utils::DateTime;
using std::chrono::minutes;
using std::chrono::seconds;

namespace {

// Far more than a test takes, far less than any correction.
constexpr std::chrono::milliseconds slack = seconds(30);

bool isAbout(std::chrono::milliseconds seen, std::chrono::milliseconds expected) {
    return std::chrono::abs(seen - expected) < slack;
}

std::chrono::milliseconds correction(const ServerClock& clock) {
    return DateTime::Diff(clock.now(), DateTime::Now());
}

TEST(ServerClock, ShowsThisMachinesTimeAtFirst) {
    EXPECT_TRUE(isAbout(correction(ServerClock()), seconds(0)));
}

TEST(ServerClock, IsNotCorrectedForLessThanFourMinutes) {
    ServerClock clock;
    EXPECT_FALSE(clock.adjustTo(DateTime::Now() + seconds(200)));
    EXPECT_FALSE(clock.adjustTo(DateTime::Now() - seconds(200)));
    EXPECT_TRUE(isAbout(correction(clock), seconds(0)));
}

TEST(ServerClock, IsCorrectedAheadAndBehind) {
    ServerClock clock;
    EXPECT_TRUE(clock.adjustTo(DateTime::Now() + minutes(60)));
    EXPECT_TRUE(isAbout(correction(clock), minutes(60)));
    EXPECT_TRUE(clock.adjustTo(DateTime::Now() - minutes(60)));
    EXPECT_TRUE(isAbout(correction(clock), -minutes(60)));
}

TEST(ServerClock, IsNotCorrectedTwiceForTheSameTime) {
    ServerClock clock;
    clock.adjustTo(DateTime::Now() + minutes(60));
    EXPECT_FALSE(clock.adjustTo(DateTime::Now() + minutes(60)));
    EXPECT_TRUE(isAbout(correction(clock), minutes(60)));
}

TEST(ServerTime, IsReadFromDateBeforeXAmzDate) {
    const char* const date = "Wed, 21 Oct 2015 07:28:00 GMT";
    const char* const other = "Wed, 21 Oct 2015 08:28:00 GMT";
    EXPECT_EQ(serverTime({{"date", date}, {"x-amz-date", other}}), DateTime(date, DateFormat::RFC822));
    EXPECT_EQ(serverTime({{"x-amz-date", other}}), DateTime(other, DateFormat::RFC822));
}

TEST(ServerTime, IsUnknownWithoutAReadableDate) {
    EXPECT_FALSE(serverTime({}).has_value());
    EXPECT_FALSE(serverTime({{"date", "not a date"}}).has_value());
}

}  // namespace
