#include "support/plugin/LogCapture.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include "LogWriting.hpp"

#include <foundation/log/diagnostic_logger.hpp>

namespace {

using foundation::log::diagnostic_logger;
using foundation::log::enabledLevels;
using foundation::log::setEnabledLevels;
using testing::ElementsAre;
using testsupport::LogCapture;
using testsupport::LoggedRecord;

TEST(LogCapture, EnablesItsLevelsWhileItLives) {
    setEnabledLevels("capture", 16);
    {
        const LogCapture capture("capture", 2 | 4);
        EXPECT_EQ(enabledLevels("capture"), 2U | 4U);
    }
    EXPECT_EQ(enabledLevels("capture"), 16U);
}

TEST(LogCapture, PutsTheMaskBackAlsoForAChannelNamedTwice) {
    setEnabledLevels("named twice", 16);
    { const LogCapture capture({"named twice", "named twice"}); }
    EXPECT_EQ(enabledLevels("named twice"), 16U);
}

TEST(LogCapture, KeepsTheRecordsOfItsChannelsInOrder) {
    diagnostic_logger a("a");
    diagnostic_logger b("b");
    diagnostic_logger c("c");
    const LogCapture capture({"a", "b"});
    writeRecord(b, 2, "first");
    writeRecord(c, 2, "not mine");
    writeRecord(a, 4, "second");
    EXPECT_THAT(capture.records(),
                ElementsAre(LoggedRecord{2, 0, "first", "b"}, LoggedRecord{4, 0, "second", "a"}));
}

TEST(LogCapture, ForgetsWhatItIsToldToForget) {
    diagnostic_logger logger("capture");
    LogCapture capture("capture");
    writeRecord(logger, 2, "old");
    capture.clear();
    writeRecord(logger, 2, "new");
    EXPECT_THAT(capture.texts(), ElementsAre("new"));
}

TEST(LogCapture, NestsOnOneChannel) {
    diagnostic_logger logger("capture");
    const LogCapture outer("capture", 2);
    {
        const LogCapture inner("capture", 4);
        writeRecord(logger, 4, "both");
    }
    EXPECT_EQ(enabledLevels("capture"), 2U);
    EXPECT_THAT(outer.texts(), ElementsAre("both"));
}

TEST(LogCapture, SurvivesARecordPushedAfterItsEnd) {
    diagnostic_logger logger("capture");
    boost::log::record record;
    {
        const LogCapture capture("capture");
        record = logger.openRecord(2);
    }
    ASSERT_TRUE(record);
    EXPECT_NO_THROW(logger.pushRecord(std::move(record)));
}

TEST(LogCapture, PrintsARecordForAFailingTest) {
    EXPECT_EQ(testing::PrintToString(LoggedRecord{2, 1, "say \"hi\"", "c"}),
              R"([level 2, indent 1, channel "c"] "say \"hi\"")");
}

}  // namespace
