#include <boost/date_time/posix_time/posix_time.hpp>
#include <ctime>
#include <optional>

#include "S3CloudClientListing.hpp"
#include "support/process/Environment.hpp"
#include "unit/CloudClientTest.hpp"

using namespace testsupport;
using namespace storage::cloudprovider;
using Aws::S3::Model::ListObjectsV2Outcome;
using Aws::S3::Model::ListObjectsV2Request;
using Aws::S3::Model::ListObjectsV2Result;
using storage::s3provider::pageEntries;
using ::testing::_;
using ::testing::ElementsAre;
using ::testing::Pair;

namespace {

Aws::S3::Model::Object object(const std::string& key, long long size = 0, std::int64_t modifiedMs = 0) {
    Aws::S3::Model::Object object;
    object.SetKey(key);
    object.SetSize(size);
    object.SetLastModified(Aws::Utils::DateTime(modifiedMs));
    return object;
}

Aws::S3::Model::CommonPrefix commonPrefix(const std::string& text) {
    Aws::S3::Model::CommonPrefix prefix;
    prefix.SetPrefix(text);
    return prefix;
}

std::vector<std::string> names(const std::vector<EntryInfo>& entries) {
    std::vector<std::string> all;
    for (const auto& entry : entries)
        all.push_back(entry.name);
    return all;
}

}  // namespace

class Listing : public CloudClientTest {
protected:
    void pageIs(ListObjectsV2Result page) {
        EXPECT_CALL(*s3, ListObjectsV2(_)).WillOnce([page](auto&) { return ListObjectsV2Outcome(page); });
    }

    ListObjectsV2Request requestSentFor(const std::string& prefix, std::string pageToken,
                                        const ListOptions& options) {
        ListObjectsV2Request sent;
        EXPECT_CALL(*s3, ListObjectsV2(_)).WillOnce([&](const auto& request) {
            sent = request;
            return ListObjectsV2Outcome(ListObjectsV2Result());
        });
        client->list(prefix, pageToken, options);
        return sent;
    }

    std::string token;
};

TEST_F(Listing, AlwaysSendsBucketPrefixAndEncoding) {
    const auto request = requestSentFor("", "", {"", 0});
    EXPECT_EQ(request.GetBucket(), "b");
    EXPECT_TRUE(request.PrefixHasBeenSet());
    EXPECT_EQ(request.GetPrefix(), "");
    EXPECT_EQ(request.GetEncodingType(), Aws::S3::Model::EncodingType::url);
    EXPECT_FALSE(request.StartAfterHasBeenSet());
}

TEST_F(Listing, SendsNoDelimiterWhenItIsEmpty) {
    EXPECT_FALSE(requestSentFor("p/", "", {"", 0}).DelimiterHasBeenSet());
    EXPECT_EQ(requestSentFor("p/", "", {"/", 0}).GetDelimiter(), "/");
}

TEST_F(Listing, SendsAPageSizeOnlyAboveZero) {
    EXPECT_FALSE(requestSentFor("", "", {"", 0}).MaxKeysHasBeenSet());
    EXPECT_FALSE(requestSentFor("", "", {"", -1}).MaxKeysHasBeenSet());
    EXPECT_EQ(requestSentFor("", "", {"", 1}).GetMaxKeys(), 1);
}

TEST_F(Listing, SendsATokenOnlyAfterTheFirstPage) {
    EXPECT_FALSE(requestSentFor("", "", {"", 0}).ContinuationTokenHasBeenSet());
    EXPECT_EQ(requestSentFor("", "next", {"", 0}).GetContinuationToken(), "next");
}

TEST_F(Listing, LogsItsArgumentsAndTheNumberOfEntries) {
    ListObjectsV2Result page;
    page.AddContents(object("a"));
    page.AddCommonPrefixes(commonPrefix("d/"));
    pageIs(page);
    LogCapture log({clientChannel}, 2 | 4);
    token = "t";
    client->list("logs/", token, {"/", 0});
    EXPECT_THAT(levelsAndTexts(log),
                ElementsAre(Pair(2, R"( m_bucket=b prefix=logs/ continuationToken=t)"
                                    R"( options=ListOptions{Delimiter="/",MaxNumEntries=0})"),
                            Pair(4, "Logging found 2 values")));
}

TEST_F(Listing, PutsObjectsBeforePrefixesInTheirOrder) {
    ListObjectsV2Result page;
    page.AddContents(object("z", 12345678901, 1445412480000));
    page.AddContents(object("m"));
    page.AddCommonPrefixes(commonPrefix("b/"));
    page.AddCommonPrefixes(commonPrefix("a/"));
    pageIs(page);
    const auto entries = client->list("", token, {"/", 0});
    EXPECT_THAT(names(entries), ElementsAre("z", "m", "b/", "a/"));
    EXPECT_EQ(entries[0].size, 12345678901);
    EXPECT_EQ(boost::posix_time::to_iso_string(entries[0].lastModified), "20151021T072800");
}

/// A machine that is far ahead of UTC.
class LocalTime {
public:
    LocalTime()
        : zone_(std::in_place,
                std::initializer_list<std::pair<const char*, Environment::Value>>{{"TZ", "AHEAD-14"}}) {
        ::tzset();
    }
    ~LocalTime() {
        zone_.reset();
        ::tzset();
    }
    LocalTime(const LocalTime&) = delete;
    LocalTime& operator=(const LocalTime&) = delete;

private:
    std::optional<Environment> zone_;
};

TEST_F(Listing, DatesPrefixesWithTheTimeOfTheListingInUtc) {
    using boost::posix_time::microsec_clock;
    const LocalTime elsewhere;
    ListObjectsV2Result page;
    page.AddCommonPrefixes(commonPrefix("d/"));
    pageIs(page);
    const auto before = microsec_clock::universal_time();
    ASSERT_GT(microsec_clock::local_time(), before + boost::posix_time::hours(13));
    const auto entries = client->list("", token, {"/", 0});
    const auto after = microsec_clock::universal_time();
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].size, 0);
    EXPECT_GE(entries[0].lastModified, before);
    EXPECT_LE(entries[0].lastModified, after);
}

TEST(PageEntries, HaveForEachPrefixTheTimeAtWhichItIsReached) {
    ListObjectsV2Result page;
    page.AddContents(object("a", 3, 1445412480000));
    for (const char* const name : {"b/", "c/", "d/"})
        page.AddCommonPrefixes(commonPrefix(name));
    auto time = boost::posix_time::from_iso_string("20240229T120000");
    const auto clock = [&] { return time += boost::posix_time::minutes(1); };
    std::vector<std::string> times;
    for (const auto& entry : pageEntries(page, clock))
        times.push_back(entry.name + " " + boost::posix_time::to_iso_string(entry.lastModified));
    EXPECT_THAT(times, ElementsAre("a 20151021T072800", "b/ 20240229T120100", "c/ 20240229T120200",
                                   "d/ 20240229T120300"));
}

TEST(PageEntries, HaveRoomForAllFromTheBeginning) {
    ListObjectsV2Result page;
    for (const char* const name : {"a", "b", "c"})
        page.AddContents(object(name));
    for (const char* const name : {"d/", "e/"})
        page.AddCommonPrefixes(commonPrefix(name));
    const auto entries = pageEntries(page, boost::posix_time::microsec_clock::universal_time);
    EXPECT_EQ(entries.capacity(), entries.size());
}

TEST_F(Listing, DecodesEveryNameOnce) {
    ListObjectsV2Result page;
    page.AddContents(object("a+b%2Bc%25d"));
    page.AddContents(object("100%25"));
    page.AddContents(object("trailing%"));
    page.AddContents(object("trailing%4"));
    page.AddCommonPrefixes(commonPrefix("f%C3%A4/"));
    page.AddCommonPrefixes(commonPrefix("100%2525/"));
    pageIs(page);
    EXPECT_THAT(names(client->list("", token, {"/", 0})),
                ElementsAre("a b+c%d", "100%", "trailing%", "trailing%4", "f\xC3\xA4/", "100%25/"));
}

TEST_F(Listing, ReturnsAnEmptyTokenAfterTheLastPage) {
    ListObjectsV2Result page;
    page.SetNextContinuationToken("ignored, the page is not truncated");
    pageIs(page);
    token = "of the page before";
    client->list("", token, {"", 0});
    EXPECT_EQ(token, "");
}

TEST_F(Listing, ReturnsTheNextTokenOfATruncatedPageWithoutEntries) {
    ListObjectsV2Result page;
    page.SetIsTruncated(true);
    page.SetNextContinuationToken("next");
    pageIs(page);
    EXPECT_TRUE(client->list("", token, {"", 0}).empty());
    EXPECT_EQ(token, "next");
}

TEST_F(Listing, LeavesTheTokenAloneWhenItFails) {
    EXPECT_CALL(*s3, ListObjectsV2(_)).WillOnce([](auto&) { return s3Error(S3Errors::NO_SUCH_BUCKET); });
    token = "kept";
    LogCapture log({clientChannel}, 512 | 4);
    expectFailure<ResourceNotFoundException>(u"no_such_bucket", [&] { client->list("", token, {"", 0}); });
    EXPECT_EQ(token, "kept");
    ASSERT_EQ(log.records().size(), 1u);
    EXPECT_EQ(log.records()[0].level, 512);
}
