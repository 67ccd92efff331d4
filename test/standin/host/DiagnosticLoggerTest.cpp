#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include "LogWriting.hpp"
#include "support/plugin/LogCapture.hpp"

#include <foundation/log/diagnostic_logger.hpp>

#include <boost/log/core/core.hpp>

#include <type_traits>

namespace {

using foundation::log::diagnostic_logger;
using foundation::log::enabledLevels;
using foundation::log::setEnabledLevels;
using testing::ElementsAre;
using testsupport::LogCapture;
using testsupport::LoggedRecord;

/// Turns the whole logging core off while it lives.
class CoreOff {
public:
    CoreOff() { boost::log::core::get()->set_logging_enabled(false); }
    CoreOff(const CoreOff&) = delete;
    CoreOff& operator=(const CoreOff&) = delete;
    ~CoreOff() { boost::log::core::get()->set_logging_enabled(true); }
};

TEST(DiagnosticLogger, KnowsItsChannel) {
    EXPECT_EQ(diagnostic_logger("some::Channel").channel(), "some::Channel");
}

TEST(DiagnosticLogger, IsTheNarrowInstanceOfItsTemplate) {
    EXPECT_TRUE((std::is_same_v<diagnostic_logger, foundation::log::basic_diagnostic_logger<char>>));
}

TEST(DiagnosticLogger, EnablesNothingByDefault) {
    const diagnostic_logger logger("default");
    EXPECT_EQ(enabledLevels("default"), 0U);
    EXPECT_FALSE(logger.levelEnabled(0x7FFF));
}

TEST(DiagnosticLogger, EnablesTheLevelsOfTheMaskOnly) {
    const diagnostic_logger logger("mask");
    setEnabledLevels("mask", 2 | 512);
    EXPECT_TRUE(logger.levelEnabled(2));
    EXPECT_TRUE(logger.levelEnabled(512));
    EXPECT_FALSE(logger.levelEnabled(4));
    EXPECT_FALSE(logger.levelEnabled(0));
    EXPECT_EQ(enabledLevels("mask"), 2U | 512U);
}

TEST(DiagnosticLogger, TakesAMaskSetBeforeItExists) {
    setEnabledLevels("early", 32);
    const diagnostic_logger logger("early");
    EXPECT_TRUE(logger.levelEnabled(32));
}

TEST(DiagnosticLogger, FollowsItsOwnChannelsMaskOnly) {
    const diagnostic_logger one("one");
    const diagnostic_logger other("other");
    setEnabledLevels("one", 2);
    EXPECT_TRUE(one.levelEnabled(2));
    EXPECT_FALSE(other.levelEnabled(2));
}

TEST(DiagnosticLogger, IgnoresLevelBitsAboveFifteen) {
    const diagnostic_logger logger("high");
    setEnabledLevels("high", 0xFFFFFFFF);
    EXPECT_TRUE(logger.levelEnabled(0x4000));
    EXPECT_FALSE(logger.levelEnabled(0x8000));
}

TEST(DiagnosticLogger, EnablesNothingWhileTheCoreIsOff) {
    const LogCapture capture("core");
    diagnostic_logger logger("core");
    const CoreOff off;
    EXPECT_FALSE(logger.coreEnabled());
    EXPECT_FALSE(logger.levelEnabled(2));
    EXPECT_FALSE(logger.openRecord(2));
}

TEST(DiagnosticLogger, WritesLevelIndentChannelAndText) {
    const LogCapture capture("shape");
    diagnostic_logger logger("shape");
    writeRecord(logger, 2, " m_bucket=b key=k");
    EXPECT_THAT(capture.records(), ElementsAre(LoggedRecord{2, 0, " m_bucket=b key=k", "shape"}));
}

TEST(DiagnosticLogger, WritesWhateverTheMaskSaysOnceAskedTo) {
    const LogCapture capture("unmasked", 0);
    diagnostic_logger logger("unmasked");
    EXPECT_FALSE(logger.levelEnabled(128));
    EXPECT_TRUE(writeRecord(logger, 128, "out=id"));
    EXPECT_THAT(capture.texts(), ElementsAre("out=id"));
}

TEST(DiagnosticLogger, OpensNoRecordThatNoSinkWants) {
    const LogCapture elsewhere("elsewhere");
    diagnostic_logger logger("unheard");
    EXPECT_FALSE(logger.openRecord(2));
    const LogCapture here("unheard");
    EXPECT_TRUE(logger.openRecord(2));
}

TEST(DiagnosticLogger, IgnoresAnEmptyRecord) {
    const LogCapture capture("empty");
    diagnostic_logger logger("empty");
    logger.pushRecord(boost::log::record());
    EXPECT_TRUE(capture.records().empty());
}

TEST(DiagnosticLogger, DropsARecordThatIsNotPushed) {
    const LogCapture capture("dropped");
    diagnostic_logger logger("dropped");
    { const auto record = logger.openRecord(2); }
    EXPECT_TRUE(capture.records().empty());
}

TEST(DiagnosticLogger, IndentsARecordAsDeepAsItsThreadWasAtItsOpening) {
    const LogCapture capture("opening");
    diagnostic_logger logger("opening");
    logger.indent().increase();
    auto record = logger.openRecord(2);
    logger.indent().decrease();
    logger.pushRecord(std::move(record));
    EXPECT_EQ(capture.records().at(0).indent, 1);
}

TEST(DiagnosticLogger, KeepsTheLevelOfAnOuterRecordWhenAnotherIsWrittenMeanwhile) {
    const LogCapture capture("nested");
    diagnostic_logger logger("nested");
    auto outer = logger.openRecord(2);
    writeRecord(logger, 512, "inner");
    boost::log::record_ostream(outer) << "outer" << std::flush;
    logger.pushRecord(std::move(outer));
    EXPECT_THAT(capture.records(),
                ElementsAre(LoggedRecord{512, 0, "inner", "nested"}, LoggedRecord{2, 0, "outer", "nested"}));
}

TEST(DiagnosticLogger, SharesTheMaskOfTheChannelWithASecondLogger) {
    const diagnostic_logger first("twice");
    const diagnostic_logger second("twice");
    setEnabledLevels("twice", 4);
    EXPECT_TRUE(first.levelEnabled(4));
    EXPECT_TRUE(second.levelEnabled(4));
}

}  // namespace
