#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include "LogWriting.hpp"
#include "support/plugin/LogCapture.hpp"

#include <foundation/log/diagnostic_logger.hpp>

#include <future>
#include <thread>

namespace {

using foundation::log::diagnostic_logger;
using foundation::log::detail::indent_attribute;
using testing::ElementsAre;
using testsupport::LogCapture;
using testsupport::LoggedRecord;

TEST(Indent, StartsAtZero) {
    EXPECT_EQ(indent_attribute().depth(), 0);
}

TEST(Indent, GoesUpAndDownStepByStep) {
    indent_attribute indent;
    indent.increase();
    indent.increase();
    EXPECT_EQ(indent.depth(), 2);
    indent.decrease();
    EXPECT_EQ(indent.depth(), 1);
}

TEST(Indent, NeverGoesBelowZero) {
    indent_attribute indent;
    indent.decrease();
    EXPECT_EQ(indent.depth(), 0);
    indent.increase();
    EXPECT_EQ(indent.depth(), 1);
}

TEST(Indent, BelongsToOneThread) {
    indent_attribute indent;
    indent.increase();
    std::async(std::launch::async, [&indent] {
        EXPECT_EQ(indent.depth(), 0);
        indent.decrease();
        indent.increase();
        indent.increase();
        EXPECT_EQ(indent.depth(), 2);
        indent.decrease();
        indent.decrease();
    }).get();
    EXPECT_EQ(indent.depth(), 1);
}

TEST(Indent, BelongsToOneLogger) {
    diagnostic_logger one("indent.one");
    diagnostic_logger other("indent.other");
    one.indent().increase();
    EXPECT_EQ(one.indent().depth(), 1);
    EXPECT_EQ(other.indent().depth(), 0);
}

TEST(Indent, ShowsInLaterRecords) {
    const LogCapture capture("indent");
    diagnostic_logger logger("indent");
    writeRecord(logger, 32, "enter");
    logger.indent().increase();
    writeRecord(logger, 2, "inside");
    logger.indent().decrease();
    writeRecord(logger, 64, "leave");
    EXPECT_THAT(capture.records(),
                ElementsAre(LoggedRecord{32, 0, "enter", "indent"}, LoggedRecord{2, 1, "inside", "indent"},
                            LoggedRecord{64, 0, "leave", "indent"}));
}

TEST(Indent, OfInterleavedCallsStaysApart) {
    const LogCapture capture("interleaved");
    diagnostic_logger logger("interleaved");
    std::promise<void> otherIsInside;
    std::promise<void> mayLeave;

    std::thread other([&] {
        logger.indent().increase();
        otherIsInside.set_value();
        mayLeave.get_future().wait();
        writeRecord(logger, 2, "other");
        logger.indent().decrease();
    });
    otherIsInside.get_future().wait();
    writeRecord(logger, 2, "mine");
    mayLeave.set_value();
    other.join();

    EXPECT_THAT(capture.records(), ElementsAre(LoggedRecord{2, 0, "mine", "interleaved"},
                                               LoggedRecord{2, 1, "other", "interleaved"}));
}

}  // namespace
