#include <gtest/gtest.h>
#include <storage/cloudprovider/CloudRecords.hpp>
#include "support/plugin/LogCapture.hpp"

#include <foundation/log/diagnostic_logger.hpp>

#include <boost/date_time/posix_time/posix_time_types.hpp>
#include <boost/log/sources/record_ostream.hpp>

#include <iomanip>
#include <limits>
#include <locale>
#include <sstream>

namespace {

using storage::cloudprovider::EntryInfo;
using storage::cloudprovider::ListOptions;
using storage::cloudprovider::PartInfo;

template <class Record>
std::string textOf(const Record& record) {
    std::ostringstream out;
    out << record;
    return out.str();
}

TEST(EntryInfo, TakesNameSizeAndTime) {
    const boost::posix_time::ptime time(boost::gregorian::date(2024, 5, 1), boost::posix_time::hours(3));
    const EntryInfo entry("logs/a", std::numeric_limits<std::int64_t>::max(), time);
    EXPECT_EQ(entry.name, "logs/a");
    EXPECT_EQ(entry.size, std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(entry.lastModified, time);
}

TEST(ListOptions, ShowsDelimiterAndNumber) {
    EXPECT_EQ(textOf(ListOptions{"/", 1000}), R"(ListOptions{Delimiter="/",MaxNumEntries=1000})");
}

TEST(ListOptions, ShowsTheDefaults) {
    EXPECT_EQ(textOf(ListOptions{}), R"(ListOptions{Delimiter="",MaxNumEntries=0})");
}

TEST(ListOptions, ShowsANegativeNumber) {
    EXPECT_EQ(textOf(ListOptions{"", -5}), R"(ListOptions{Delimiter="",MaxNumEntries=-5})");
}

TEST(PartInfo, ShowsAllFields) {
    EXPECT_EQ(textOf(PartInfo{1, 0, 5242880, "abc"}), R"(PartInfo{Index=1,Offset=0,Size=5242880,Tag="abc"})");
}

TEST(PartInfo, ShowsTheLargestNumbers) {
    constexpr auto most = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(textOf(PartInfo{most, most, most, ""}),
              "PartInfo{Index=18446744073709551615,Offset=18446744073709551615,"
              "Size=18446744073709551615,Tag=\"\"}");
}

TEST(PartInfo, EscapesNothingInTheTag) {
    EXPECT_EQ(textOf(PartInfo{0, 0, 0, "\"a\\b\""}), R"(PartInfo{Index=0,Offset=0,Size=0,Tag=""a\b""})");
}

struct Grouping : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(RecordText, IgnoresNumberBaseAndLocaleOfTheStream) {
    std::ostringstream out;
    out.imbue(std::locale(std::locale::classic(), new Grouping));
    out << std::hex << std::showbase << PartInfo{4096, 0, 5242880, "t"};
    EXPECT_EQ(out.str(), R"(PartInfo{Index=4096,Offset=0,Size=5242880,Tag="t"})");
}

TEST(RecordText, FillsTheStreamsWidthAsOnePiece) {
    std::ostringstream out;
    out << std::setw(45) << ListOptions{} << '|';
    EXPECT_EQ(out.str(), R"(    ListOptions{Delimiter="",MaxNumEntries=0}|)");
}

TEST(RecordText, GoesToAWideStream) {
    std::wostringstream out;
    out << ListOptions{"/", 7} << PartInfo{1, 2, 3, "t"};
    EXPECT_EQ(out.str(),
              LR"(ListOptions{Delimiter="/",MaxNumEntries=7}PartInfo{Index=1,Offset=2,Size=3,Tag="t"})");
}

TEST(RecordText, GoesToALogRecordsStream) {
    const testsupport::LogCapture capture("records");
    foundation::log::diagnostic_logger logger("records");
    auto record = logger.openRecord(2);
    ASSERT_TRUE(record);
    boost::log::record_ostream(record)
        << "options=" << ListOptions{"/", 7} << " info=" << PartInfo{1, 2, 3, "t"} << std::flush;
    logger.pushRecord(std::move(record));
    EXPECT_EQ(
        capture.texts(),
        std::vector<std::string>{
            R"(options=ListOptions{Delimiter="/",MaxNumEntries=7} info=PartInfo{Index=1,Offset=2,Size=3,Tag="t"})"});
}

}  // namespace
