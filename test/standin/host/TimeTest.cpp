#include <gtest/gtest.h>
#include <storage/cloudprovider/utils.hpp>

#include <boost/date_time/posix_time/posix_time.hpp>

#include <limits>
#include <string>

namespace {

using storage::cloudprovider::utils::long2Ptime;

std::string isoTime(long long milliseconds) {
    return boost::posix_time::to_iso_extended_string(long2Ptime(milliseconds));
}

TEST(Long2Ptime, CountsMillisecondsFromTheEpoch) {
    EXPECT_EQ(isoTime(0), "1970-01-01T00:00:00");
    EXPECT_EQ(isoTime(1), "1970-01-01T00:00:00.001000");
    EXPECT_EQ(isoTime(1714532645678), "2024-05-01T03:04:05.678000");
}

TEST(Long2Ptime, CountsBackForNegativeValues) {
    EXPECT_EQ(isoTime(-1), "1969-12-31T23:59:59.999000");
}

TEST(Long2Ptime, GoesBeyondThirtyTwoBitsOfSeconds) {
    EXPECT_EQ(isoTime(4102444800000), "2100-01-01T00:00:00");
}

TEST(Long2Ptime, ReachesTheEndsOfThePtimeCalendar) {
    EXPECT_EQ(isoTime(-17987443200000), "1400-01-01T00:00:00");
    EXPECT_EQ(isoTime(253402300799999), "9999-12-31T23:59:59.999000");
}

TEST(Long2Ptime, GivesNoTimeBeyondThem) {
    EXPECT_TRUE(long2Ptime(-17987443200001).is_not_a_date_time());
    EXPECT_TRUE(long2Ptime(253402300800000).is_not_a_date_time());
    EXPECT_TRUE(long2Ptime(std::numeric_limits<long long>::max()).is_not_a_date_time());
    EXPECT_TRUE(long2Ptime(std::numeric_limits<long long>::min()).is_not_a_date_time());
}

}  // namespace
