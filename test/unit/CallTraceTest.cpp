#include "CallTrace.hpp"

#include <aws/s3/model/HeadObjectResult.h>

#include <sstream>
#include <storage/cloudprovider/CloudRecords.hpp>

#include "unit/CloudClientTest.hpp"

using namespace testsupport;
using Aws::S3::Model::HeadObjectOutcome;
using Aws::S3::Model::HeadObjectResult;
using ::testing::_;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Pair;

class CallTrace : public CloudClientTest {};

TEST_F(CallTrace, FramesTheRecordsOfASuccessfulStat) {
    EXPECT_CALL(*s3, HeadObject(_)).WillOnce([](auto&) { return HeadObjectOutcome(HeadObjectResult()); });
    LogCapture log({clientChannel}, allLevels);
    client->stat("k");
    const auto records = log.records();
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[0].level, 32);
    EXPECT_THAT(records[0].text, HasSubstr("S3CloudClient::stat("));
    EXPECT_EQ(records[1].level, 2);
    EXPECT_EQ(records[1].text, " m_bucket=b key=k");
    EXPECT_EQ(records[2].level, 64);
    EXPECT_EQ(records[2].text, records[0].text);
}

TEST_F(CallTrace, IndentsWhatHappensInsideTheCall) {
    EXPECT_CALL(*s3, HeadObject(_)).WillOnce([](auto&) { return HeadObjectOutcome(HeadObjectResult()); });
    LogCapture log({clientChannel}, allLevels);
    client->stat("k");
    const auto records = log.records();
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[1].indent, records[0].indent + 1);
    EXPECT_EQ(records[2].indent, records[0].indent);
}

TEST_F(CallTrace, MarksACallThatWasLeftByAnException) {
    EXPECT_CALL(*s3, DeleteObject(_)).WillOnce([](auto&) { return s3Error(S3Errors::ACCESS_DENIED); });
    LogCapture log({clientChannel}, allLevels);
    EXPECT_ANY_THROW(client->remove("k"));
    const auto records = log.records();
    ASSERT_FALSE(records.empty());
    EXPECT_EQ(records.back().level, 64);
    EXPECT_EQ(records.back().text, records.front().text + " [throw]");
}

TEST_F(CallTrace, IsNotMarkedByAnExceptionThatWasAlreadyUnderWay) {
    EXPECT_CALL(*s3, HeadObject(_)).WillOnce([](auto&) { return HeadObjectOutcome(HeadObjectResult()); });
    LogCapture log({clientChannel}, allLevels);
    struct StatsWhenDestroyed {
        storage::s3provider::S3CloudClient& client;
        ~StatsWhenDestroyed() { client.stat("k"); }
    };
    try {
        const StatsWhenDestroyed unwound{*client};
        throw std::runtime_error("under way");
    } catch (const std::runtime_error&) {
        EXPECT_EQ(log.records().back().text, log.records().front().text);
    }
}

TEST_F(CallTrace, StaysSilentWhenItsLevelIsEnabledDuringTheCall) {
    LogCapture log({clientChannel}, allLevels & ~32u);
    EXPECT_CALL(*s3, HeadObject(_)).WillOnce([](auto&) {
        foundation::log::setEnabledLevels(clientChannel, allLevels);
        return HeadObjectOutcome(HeadObjectResult());
    });
    client->stat("k");
    logRecord(storage::s3provider::s3ClientLogger(), storage::s3provider::LogArguments, "afterwards");
    EXPECT_THAT(levelsAndTexts(log), ElementsAre(Pair(2, " m_bucket=b key=k"), Pair(2, "afterwards")));
    EXPECT_EQ(log.records()[0].indent, log.records()[1].indent);
}

TEST_F(CallTrace, WritesItsExitRecordWhateverTheMaskSaysByThen) {
    LogCapture log({clientChannel}, allLevels);
    EXPECT_CALL(*s3, HeadObject(_)).WillOnce([](auto&) {
        foundation::log::setEnabledLevels(clientChannel, 0);
        return HeadObjectOutcome(HeadObjectResult());
    });
    client->stat("k");
    ASSERT_EQ(log.records().size(), 3u);
    EXPECT_EQ(log.records().back().level, 64);
}

TEST_F(CallTrace, FramesTheConstructorWithItsMembers) {
    LogCapture log({clientChannel}, allLevels);
    const auto constructed = clientWith({1, 1}, "");
    const auto records = log.records();
    ASSERT_EQ(records.size(), 3u);
    EXPECT_THAT(records[0].text, HasSubstr("S3CloudClient::S3CloudClient("));
    EXPECT_EQ(records[1].level, 2);
    EXPECT_EQ(records[1].text, " m_bucket=b m_configuredRegion=");
    EXPECT_EQ(records[2].text, records[0].text);
}

TEST_F(CallTrace, IsSilentInTheDestructor) {
    auto constructed = clientWith({1, 1});
    LogCapture log({clientChannel}, allLevels);
    constructed.reset();
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST_F(CallTrace, FormatsNothingForADisabledLevel) {
    LogCapture log({clientChannel}, 4);
    bool formatted = false;
    const auto piece = [&] { return formatted = true; };
    logRecord(storage::s3provider::s3ClientLogger(), storage::s3provider::LogArguments, piece);
    EXPECT_FALSE(formatted);
    logRecord(storage::s3provider::s3ClientLogger(), storage::s3provider::LogResults, piece);
    EXPECT_TRUE(formatted);
}

TEST_F(CallTrace, DropsARecordWhosePiecesThrow) {
    LogCapture log({clientChannel}, allLevels);
    const auto piece = []() -> int { throw std::runtime_error("no text"); };
    EXPECT_NO_THROW(
        logRecord(storage::s3provider::s3ClientLogger(), storage::s3provider::LogArguments, "begun", piece));
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST(ListOptions, PrintsItsFields) {
    std::ostringstream out;
    out << storage::cloudprovider::ListOptions{"/", 1000};
    EXPECT_EQ(out.str(), R"(ListOptions{Delimiter="/",MaxNumEntries=1000})");
}

TEST(ListOptions, PrintsAnEmptyDelimiterAndNoLimit) {
    std::ostringstream out;
    out << storage::cloudprovider::ListOptions{"", 0};
    EXPECT_EQ(out.str(), R"(ListOptions{Delimiter="",MaxNumEntries=0})");
}

TEST(PartInfo, PrintsItsFields) {
    std::ostringstream out;
    out << storage::cloudprovider::PartInfo{1, 0, 5242880, "abc"};
    EXPECT_EQ(out.str(), R"(PartInfo{Index=1,Offset=0,Size=5242880,Tag="abc"})");
}
