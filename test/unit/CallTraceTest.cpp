#include "CallTrace.hpp"

#include <aws/s3/model/HeadObjectResult.h>

#include <algorithm>
#include <functional>
#include <locale>
#include <sstream>
#include <stdexcept>
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

namespace {

/// A value whose insertion leaves the stream broken, as one does that runs out of memory.
struct BreaksTheStream {};

std::ostream& operator<<(std::ostream& out, BreaksTheStream) {
    out << "half a val";
    out.setstate(std::ios::badbit);
    return out;
}

}  // namespace

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
    auto& indent = storage::s3provider::s3ClientLogger().indent();
    indent.increase();  // one step deep already, so that a step too many back would show
    EXPECT_CALL(*s3, HeadObject(_)).WillOnce([](auto&) {
        foundation::log::setEnabledLevels(clientChannel, allLevels);
        return HeadObjectOutcome(HeadObjectResult());
    });
    client->stat("k");
    logRecord(storage::s3provider::s3ClientLogger(), storage::s3provider::LogArguments, "afterwards");
    EXPECT_THAT(levelsAndTexts(log), ElementsAre(Pair(2, " m_bucket=b key=k"), Pair(2, "afterwards")));
    EXPECT_EQ(log.records()[0].indent, 1);
    EXPECT_EQ(log.records()[1].indent, 1);
    indent.decrease();
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

TEST_F(CallTrace, DropsARecordThatWasCutShort) {
    LogCapture log({clientChannel}, allLevels);
    const auto piece = [] { return BreaksTheStream(); };
    logRecord(storage::s3provider::s3ClientLogger(), storage::s3provider::LogArguments, "begun", piece);
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST_F(CallTrace, WritesNumbersWithoutTheDigitGroupsOfTheLocale) {
    struct Grouping : std::numpunct<char> {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const auto before = std::locale::global(std::locale(std::locale(), new Grouping));
    LogCapture log({clientChannel}, 2);
    logRecord(storage::s3provider::s3ClientLogger(), storage::s3provider::LogArguments, " start=", 1234567);
    std::locale::global(before);
    EXPECT_THAT(log.texts(), ElementsAre(" start=1234567"));
}

/// One operation of the client, and what its signature must hold.
struct TracedOperation {
    const char* name;
    std::function<void(storage::s3provider::S3CloudClient&)> call;
    int failureRecords = 1;
};

void PrintTo(const TracedOperation& operation, std::ostream* out) {
    *out << operation.name;
}

class EveryOperation : public CloudClientTest, public ::testing::WithParamInterface<TracedOperation> {
protected:
    template <class Expectation>
    static void fails(Expectation& expectation) {
        expectation.Times(::testing::AnyNumber()).WillRepeatedly([](auto&) {
            return s3Error(Aws::S3::S3Errors::ACCESS_DENIED);
        });
    }
};

TEST_P(EveryOperation, IsFramedAndLogsItsFailure) {
    fails(EXPECT_CALL(*s3, HeadObject(_)));
    fails(EXPECT_CALL(*s3, HeadBucket(_)));
    fails(EXPECT_CALL(*s3, GetBucketLocation(_)));
    fails(EXPECT_CALL(*s3, ListObjectsV2(_)));
    fails(EXPECT_CALL(*s3, GetObject(_)));
    fails(EXPECT_CALL(*s3, PutObject(_)));
    fails(EXPECT_CALL(*s3, DeleteObject(_)));
    fails(EXPECT_CALL(*s3, CreateMultipartUpload(_)));
    fails(EXPECT_CALL(*s3, UploadPart(_)));
    fails(EXPECT_CALL(*s3, UploadPartCopy(_)));
    fails(EXPECT_CALL(*s3, CompleteMultipartUpload(_)));
    fails(EXPECT_CALL(*s3, AbortMultipartUpload(_)));
    LogCapture log({clientChannel}, allLevels);
    expectFailure<storage::cloudprovider::PermissionDeniedException>(u"access_denied",
                                                                     [&] { GetParam().call(*client); });
    const auto records = log.records();
    ASSERT_GE(records.size(), 3u);
    EXPECT_EQ(records.front().level, 32);
    EXPECT_THAT(records.front().text, HasSubstr("S3CloudClient::" + std::string(GetParam().name) + "("));
    EXPECT_EQ(records[1].level, 2);
    EXPECT_EQ(records.back().level, 64);
    EXPECT_EQ(records.back().text, records.front().text + " [throw]");
    const auto failures =
        std::count_if(records.begin(), records.end(), [](auto& r) { return r.level == 512; });
    EXPECT_EQ(failures, GetParam().failureRecords);
}

std::istringstream content("content");
std::ostringstream anyStream;
std::string anyToken;

INSTANTIATE_TEST_SUITE_P(
    Client, EveryOperation,
    ::testing::Values(
        TracedOperation{"stat", [](auto& c) { c.stat("k"); }},
        TracedOperation{"checkRootValidity", [](auto& c) { c.checkRootValidity("/"); }, 0},
        TracedOperation{"list",
                        [](auto& c) {
                            c.list("", anyToken, {"", 0});
                        }},
        TracedOperation{"remove", [](auto& c) { c.remove("k"); }},
        TracedOperation{"download", [](auto& c) { c.download("k", anyStream, 0, 0); }},
        TracedOperation{"upload", [](auto& c) { c.upload("k", content, 7); }},
        TracedOperation{"listParts", [](auto& c) { c.listParts("k"); }},
        TracedOperation{"startMultipartUpload", [](auto& c) { c.startMultipartUpload("k", ""); }},
        TracedOperation{"uploadPart",
                        [](auto& c) {
                            c.uploadPart("k", "id", {0, 0, 7, ""}, content);
                        }},
        TracedOperation{"reusePart",
                        [](auto& c) {
                            c.reusePart("k", "id", {0, 0, 7, ""});
                        }},
        TracedOperation{"abortMultipartUpload", [](auto& c) { c.abortMultipartUpload("k", "id"); }},
        TracedOperation{"completeMultipartUpload",
                        [](auto& c) { c.completeMultipartUpload("k", "id", {}); }}),
    [](const auto& operation) { return operation.param.name; });

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
