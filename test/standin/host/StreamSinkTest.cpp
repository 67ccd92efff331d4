#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include "LogWriting.hpp"
#include "support/plugin/LogCapture.hpp"

#include <foundation/log/diagnostic_logger.hpp>
#include <foundation/log/stream_sink.hpp>

#include <algorithm>
#include <locale>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>

namespace {

using foundation::log::addStreamSink;
using foundation::log::diagnostic_logger;
using testing::MatchesRegex;

/// The line that a record of this text makes, without its time.
std::string lineOf(const std::string& text, int indent = 0) {
    std::ostringstream out;
    diagnostic_logger logger("sink");
    const auto sink = addStreamSink(out);
    for (int i = 0; i < indent; ++i)
        logger.indent().increase();
    writeRecord(logger, 32, text);
    const std::string line = out.str();
    return line.substr(line.find(' ') + 1);
}

/// The message part of that line.
std::string shown(const std::string& text) {
    const std::string line = lineOf(text);
    const std::string head = "sink   32 ";
    return line.substr(head.size(), line.size() - head.size() - 1);
}

TEST(StreamSink, WritesTimeChannelLevelAndMessage) {
    std::ostringstream out;
    diagnostic_logger logger("storage::s3provider::S3Client");
    const auto sink = addStreamSink(out);
    writeRecord(logger, 512, "Cloud operation failed: x");
    EXPECT_THAT(out.str(), MatchesRegex("[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{6}Z "
                                        "storage::s3provider::S3Client  512 Cloud operation failed: x\n"));
}

TEST(StreamSink, IndentsTheMessageByTwoBlanksAStep) {
    EXPECT_EQ(lineOf("text"), "sink   32 text\n");
    EXPECT_EQ(lineOf("text", 1), "sink   32   text\n");
    EXPECT_EQ(lineOf("text", 3), "sink   32       text\n");
}

TEST(StreamSink, WritesOneLineARecord) {
    std::ostringstream out;
    diagnostic_logger logger("sink");
    const auto sink = addStreamSink(out);
    writeRecord(logger, 2, "one\r\ntwo\n");
    writeRecord(logger, 2, "");
    writeRecord(logger, 2, "three");
    const std::string text = out.str();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 3);
}

TEST(StreamSink, WritesOnlyTheLevelsAskedFor) {
    std::ostringstream out;
    diagnostic_logger logger("sink");
    const auto sink = addStreamSink(out, 2 | 32);
    writeRecord(logger, 2, "two");
    writeRecord(logger, 512, "five hundred and twelve");
    writeRecord(logger, 32, "thirty-two");
    EXPECT_THAT(out.str(), MatchesRegex("[^\n]*two\n[^\n]*thirty-two\n"));
}

TEST(StreamSink, ShowsControlCharactersAsEscapes) {
    EXPECT_EQ(shown("a\r\n\tb"), "a\\r\\n\\tb");
    EXPECT_EQ(shown("\x1b[31m\x7f"), "\\x1B[31m\\x7F");
    EXPECT_EQ(shown(std::string("nul\0!", 5)), "nul\\x00!");
}

TEST(StreamSink, ShowsUnicodeControlsAndLineEndsAsEscapes) {
    EXPECT_EQ(shown("\u0085|\u2028|\u2029|\u202e|\u2066"), "\\u0085|\\u2028|\\u2029|\\u202E|\\u2066");
}

TEST(StreamSink, ShowsABackslashTwice) {
    EXPECT_EQ(shown("a\\nb"), "a\\\\nb");
}

TEST(StreamSink, ShowsBytesThatAreNotUtf8AsEscapes) {
    EXPECT_EQ(shown("a\xff|\xe2\x82|b\xc3"), "a\\xFF|\\xE2\\x82|b\\xC3");
}

TEST(StreamSink, LeavesOtherTextAsItIs) {
    const std::string text = " key=\u00fcber/\u65e5\u672c/\U0001F600 \"'{}%";
    EXPECT_EQ(shown(text), text);
}

struct Grouping : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(StreamSink, WritesLevelsTheSameInEveryLocale) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Grouping));
    std::ostringstream out;
    diagnostic_logger logger("sink");
    const auto sink = addStreamSink(out);
    writeRecord(logger, 4096, "text");
    std::locale::global(before);
    EXPECT_THAT(out.str(), testing::EndsWith(" sink 4096 text\n"));
}

TEST(StreamSink, WritesRecordsOfEveryChannel) {
    std::ostringstream out;
    diagnostic_logger one("channel.one");
    diagnostic_logger two("channel.two");
    const auto sink = addStreamSink(out);
    writeRecord(one, 2, "text");
    writeRecord(two, 2, "text");
    EXPECT_THAT(out.str(), testing::ContainsRegex("channel.one.*\n.*channel.two"));
}

TEST(StreamSink, StopsWritingAtItsEnd) {
    const testsupport::LogCapture otherSink("sink");
    std::ostringstream out;
    diagnostic_logger logger("sink");
    { const auto sink = addStreamSink(out); }
    EXPECT_TRUE(writeRecord(logger, 2, "late"));
    EXPECT_EQ(out.str(), "");
}

TEST(StreamSink, DoesNotTouchTheStreamForARecordOpenedBeforeItsEnd) {
    const testsupport::LogCapture otherSink("sink");
    diagnostic_logger logger("sink");
    boost::log::record record;
    std::ostringstream out;
    {
        const auto sink = addStreamSink(out);
        record = logger.openRecord(2);
    }
    logger.pushRecord(std::move(record));
    EXPECT_EQ(out.str(), "");
}

TEST(StreamSink, GoesOnAfterAMove) {
    std::ostringstream out;
    diagnostic_logger logger("sink");
    auto first = addStreamSink(out);
    const auto second = std::move(first);
    writeRecord(logger, 2, "moved");
    EXPECT_THAT(out.str(), testing::EndsWith("moved\n"));
}

TEST(StreamSink, LetsGoOfASharedStreamAtItsEnd) {
    const auto out = std::make_shared<std::ostringstream>();
    {
        const auto sink = addStreamSink(std::shared_ptr<std::ostream>(out));
        EXPECT_GT(out.use_count(), 1);
    }
    EXPECT_EQ(out.use_count(), 1);
}

TEST(StreamSink, RefusesANullStream) {
    EXPECT_THROW((void)addStreamSink(std::shared_ptr<std::ostream>()), std::invalid_argument);
}

struct BrokenBuffer : std::streambuf {
    int_type overflow(int_type) override { throw std::runtime_error("disk full"); }
};

TEST(StreamSink, KeepsTheFailuresOfItsStreamFromWhoLogs) {
    BrokenBuffer buffer;
    std::ostream out(&buffer);
    out.exceptions(std::ios::badbit);
    diagnostic_logger logger("sink");
    const auto sink = addStreamSink(out);
    EXPECT_NO_THROW(writeRecord(logger, 2, "text"));
    EXPECT_TRUE(out.bad());
}

}  // namespace
