#include "text/Dates.hpp"

#include <gmock/gmock.h>

namespace s3server::test {
namespace {

const TimePoint time = std::chrono::system_clock::from_time_t(1369353600);  // 24 May 2013

TEST(Dates, AreWrittenInTheFormsOfHttpAndXml) {
    EXPECT_EQ(httpDate(time), "Fri, 24 May 2013 00:00:00 GMT");
    EXPECT_EQ(xmlDate(time + std::chrono::milliseconds(7)), "2013-05-24T00:00:00.007Z");
}

TEST(Dates, AreReadAsWritten) {
    EXPECT_EQ(parseHttpDate("Fri, 24 May 2013 00:00:00 GMT"), time);
    EXPECT_EQ(parseSigningDate("20130524T000000Z"), time);
}

TEST(Dates, BehindTheClocksEndAreAsLateAsCanBe) {
    const auto latest = parseHttpDate("Fri, 31 Dec 9999 23:59:59 GMT");
    ASSERT_TRUE(latest);
    EXPECT_EQ(httpDate(*latest), "Tue, 31 Dec 2261 23:59:59 GMT");
    EXPECT_EQ(parseSigningDate("99991231T235959Z"), latest);
}

TEST(Dates, OfAnyOtherFormAreNone) {
    for (const char* const text : {"", "Fri, 24 May 2013 00:00:00", "Fri, 24 Foo 2013 00:00:00 GMT",
                                   "Fri, 24 May 2013 25:00:00 GMT", "Friday, 24-May-13 00:00:00 GMT"})
        EXPECT_FALSE(parseHttpDate(text)) << text;
    for (const char* const text :
         {"", "20130524", "20131324T000000Z", "20130524T000000", "2013-05-24T00:00:00Z", "+0130524T000000Z"})
        EXPECT_FALSE(parseSigningDate(text)) << text;
}

}  // namespace
}  // namespace s3server::test
