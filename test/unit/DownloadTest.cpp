#include <chrono>
#include <sstream>

#include "DownloadAttempts.hpp"
#include "unit/CloudClientTest.hpp"

using namespace testsupport;
using namespace storage::cloudprovider;
using Aws::Http::HttpResponseCode;
using Aws::S3::Model::GetObjectOutcome;
using Aws::S3::Model::GetObjectResult;
using storage::s3provider::attemptDownload;
using ::testing::_;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using namespace std::chrono_literals;

namespace {

GetObjectOutcome body(const std::string& text) {
    GetObjectResult result;
    result.ReplaceBody(new std::stringstream(text));  // the SDK's stream takes ownership
    return GetObjectOutcome(std::move(result));
}

GetObjectOutcome rangeNotSatisfiable() {
    return s3Error(Aws::S3::S3Errors::UNKNOWN, "InvalidRange", "The requested range is not satisfiable",
                   HttpResponseCode::REQUESTED_RANGE_NOT_SATISFIABLE);
}

GetObjectOutcome missing() {
    return s3Error(Aws::S3::S3Errors::NO_SUCH_KEY, "NoSuchKey", "M");
}

}  // namespace

class Download : public CloudClientTest {
protected:
    std::string rangeSentFor(std::uint64_t start, std::uint64_t end) {
        std::string range = "none";
        EXPECT_CALL(*s3, GetObject(_)).WillOnce([&](const auto& request) {
            EXPECT_EQ(request.GetBucket(), "b");
            EXPECT_EQ(request.GetKey(), "k");
            if (request.RangeHasBeenSet()) range = request.GetRange();
            return body("content");
        });
        std::ostringstream received;
        client->download("k", received, start, end);
        EXPECT_EQ(received.str(), "content");
        return range;
    }

    std::ostringstream out;
};

TEST_F(Download, AsksForTheWholeObjectWhenStartAndEndAreZero) {
    EXPECT_EQ(rangeSentFor(0, 0), "none");
}

TEST_F(Download, AsksForTheWholeObjectUnlessStartIsBelowEnd) {
    EXPECT_EQ(rangeSentFor(10, 10), "none");
    EXPECT_EQ(rangeSentFor(20, 10), "none");
}

TEST_F(Download, SendsBothEndsOfARangeUnchanged) {
    EXPECT_EQ(rangeSentFor(100, 199), "bytes=100-199");
    EXPECT_EQ(rangeSentFor(0, 1), "bytes=0-1");
    EXPECT_EQ(rangeSentFor(1, UINT64_MAX), "bytes=1-18446744073709551615");
}

TEST_F(Download, LogsItsArgumentsAndItsOutcome) {
    EXPECT_CALL(*s3, GetObject(_)).WillOnce([](auto&) { return body("x"); });
    LogCapture log({clientChannel}, 2 | 4 | 512);
    client->download("k", out, 1234567, 7654321);
    EXPECT_THAT(levelsAndTexts(log), ElementsAre(Pair(2, " m_bucket=b key=k start=1234567 end=7654321"),
                                                 Pair(4, "Successful operation")));
}

TEST_F(Download, LeavesTheFailureFlagOnTheStreamForAnEmptyBody) {
    EXPECT_CALL(*s3, GetObject(_)).WillOnce([](auto&) { return body(""); });
    EXPECT_NO_THROW(client->download("k", out, 0, 0));
    EXPECT_TRUE(out.fail());
}

TEST_F(Download, FetchesAnEmptyObjectWholeAfterItRefusedTheRange) {
    std::vector<std::string> ranges;
    EXPECT_CALL(*s3, GetObject(_))
        .WillOnce([&](const auto& request) {
            ranges.push_back(request.GetRange());
            return rangeNotSatisfiable();
        })
        .WillOnce([&](const auto& request) {
            ranges.push_back(request.GetRange());
            return body("");
        });
    LogCapture log({clientChannel}, 4);
    client->download("k", out, 0, 99);
    EXPECT_THAT(ranges, ElementsAre("bytes=0-99", ""));
    EXPECT_THAT(levelsAndTexts(log),
                ElementsAre(Pair(4, "InvalidRange(UNKNOWN):The requested range is not satisfiable"),
                            Pair(4, "Internal error: retrying..."), Pair(4, "Successful operation")));
}

TEST_F(Download, RaisesTheRefusedRangeWhenThereIsNoSecondAttempt) {
    client = clientWith({1, 0});
    EXPECT_CALL(*s3, GetObject(_)).WillOnce([](auto&) { return rangeNotSatisfiable(); });
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) { return locatedIn("eu-west-3"); });
    expectFailure<UnknownErrorException>(noIdentifier, [&] { client->download("k", out, 0, 99); });
}

TEST_F(Download, RaisesTheLastErrorAfterItsRecord) {
    client = clientWith({2, 0});
    EXPECT_CALL(*s3, GetObject(_))
        .WillOnce([](auto&) { return s3Error(S3Errors::SLOW_DOWN, "SlowDown"); })
        .WillOnce([](auto&) { return missing(); });
    LogCapture log({clientChannel}, 512);
    expectFailure<ResourceNotFoundException>(u"no_such_key", [&] { client->download("k", out, 0, 0); });
    EXPECT_EQ(log.records().size(), 1u);
}

TEST_F(Download, SleepsOnItsOwnThread) {
    client = clientWith({1, 20});
    EXPECT_CALL(*s3, GetObject(_)).WillOnce([](auto&) { return missing(); });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_THROW(client->download("k", out, 0, 0), ResourceNotFoundException);
    EXPECT_GE(std::chrono::steady_clock::now() - start, 20ms);
}

TEST_F(Download, WithoutAttemptsSendsNoGetObjectAndStillChecksTheRegion) {
    client = clientWith({0, 1000});
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) { return locatedIn("eu-west-3"); });
    LogCapture log({clientChannel}, 4 | 512);
    expectFailure<UnknownErrorException>(noIdentifier, [&] { client->download("k", out, 0, 0); });
    ASSERT_EQ(log.records().size(), 1u);
    EXPECT_EQ(log.records()[0].level, 512);

    client = clientWith({0, 1000}, "us-west-2");
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) { return locatedIn("eu-west-3"); });
    expectFailure<InvalidLocationException>(u"bad_region", [&] { client->download("k", out, 0, 0); });
}

/// The loop alone, with attempts that are scripted and pauses that only are written down.
class AttemptDownload : public ::testing::Test {
protected:
    GetObjectOutcome attempt(storage::s3provider::S3ClientConfiguration settings, std::uint64_t start,
                             std::uint64_t end, std::function<GetObjectOutcome()> answer) {
        const auto get = [&](std::uint64_t first, std::uint64_t last) {
            requests.emplace_back(first, last);
            return answer();
        };
        return attemptDownload(settings, start, end, get, [&](auto time) { pauses.push_back(time); });
    }

    std::vector<std::pair<std::uint64_t, std::uint64_t>> requests;
    std::vector<std::chrono::milliseconds> pauses;
};

TEST_F(AttemptDownload, SleepsAfterEachFailedAttemptTheLastOneIncluded) {
    EXPECT_FALSE(attempt({5, 1000}, 0, 0, missing).IsSuccess());
    EXPECT_EQ(requests.size(), 5u);
    EXPECT_THAT(pauses, ElementsAre(1000ms, 1000ms, 1000ms, 1000ms, 1000ms));
}

TEST_F(AttemptDownload, DoesNotSleepForNoTimeOrLess) {
    attempt({2, 0}, 0, 0, missing);
    attempt({2, -7}, 0, 0, missing);
    EXPECT_EQ(requests.size(), 4u);
    EXPECT_THAT(pauses, IsEmpty());
}

TEST_F(AttemptDownload, DoesNotSleepAfterASuccess) {
    EXPECT_TRUE(attempt({5, 1000}, 0, 0, [] { return body("x"); }).IsSuccess());
    EXPECT_EQ(requests.size(), 1u);
    EXPECT_THAT(pauses, IsEmpty());
}

TEST_F(AttemptDownload, PausesOnceBeforeItFetchesAnEmptyObjectWhole) {
    const auto answer = [&] { return requests.size() == 1 ? rangeNotSatisfiable() : body(""); };
    EXPECT_TRUE(attempt({5, 1000}, 0, 99, answer).IsSuccess());
    EXPECT_THAT(requests, ElementsAre(Pair(0, 99), Pair(0, 0)));
    EXPECT_THAT(pauses, ElementsAre(1000ms));
}

TEST_F(AttemptDownload, RepeatsARefusedRangeUnchangedUnlessItStartsAtZero) {
    EXPECT_FALSE(attempt({3, 10}, 5, 99, rangeNotSatisfiable).IsSuccess());
    EXPECT_THAT(requests, ElementsAre(Pair(5, 99), Pair(5, 99), Pair(5, 99)));
    EXPECT_THAT(pauses, ElementsAre(10ms, 10ms, 10ms));
}

TEST_F(AttemptDownload, NeverGoesBackToTheRangeThatWasRefused) {
    const auto answer = [&] { return requests.size() == 1 ? rangeNotSatisfiable() : missing(); };
    attempt({3, 0}, 0, 99, answer);
    EXPECT_THAT(requests, ElementsAre(Pair(0, 99), Pair(0, 0), Pair(0, 0)));
}

TEST_F(AttemptDownload, KeepsTheRangeAfterAnyOtherFailure) {
    attempt({2, 0}, 0, 99, missing);
    EXPECT_THAT(requests, ElementsAre(Pair(0, 99), Pair(0, 99)));
}

TEST_F(AttemptDownload, AnnouncesThePauseBeforeItSleeps) {
    LogCapture log({clientChannel}, 4);
    const auto sleep = [&](auto) { EXPECT_EQ(log.texts().back(), "Internal error: retrying..."); };
    attemptDownload(
        {1, 10}, 0, 0, [](auto, auto) { return missing(); }, sleep);
    EXPECT_EQ(log.records().size(), 2u);
}

TEST_F(AttemptDownload, WithoutAttemptsHasAnEmptyError) {
    const auto outcome = attempt({0, 1000}, 0, 0, missing);
    EXPECT_FALSE(outcome.IsSuccess());
    EXPECT_EQ(outcome.GetError().GetExceptionName(), "");
    EXPECT_EQ(outcome.GetError().GetMessage(), "");
    EXPECT_THAT(requests, IsEmpty());
    EXPECT_THAT(pauses, IsEmpty());
}

TEST_F(AttemptDownload, CountsNegativeAttemptsAsHugeNumbers) {
    const auto answer = [&] { return requests.size() < 1000 ? missing() : body("x"); };
    EXPECT_TRUE(attempt({-1, 0}, 0, 0, answer).IsSuccess());
    EXPECT_EQ(requests.size(), 1000u);
}
