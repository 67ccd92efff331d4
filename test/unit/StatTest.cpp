#include <boost/date_time/posix_time/posix_time.hpp>

#include "unit/CloudClientTest.hpp"

using namespace testsupport;
using namespace storage::cloudprovider;
using Aws::S3::Model::HeadObjectOutcome;
using Aws::S3::Model::HeadObjectResult;
using ::testing::_;
using ::testing::EndsWith;
using ::testing::Not;

class Stat : public CloudClientTest {};

TEST_F(Stat, TellsNameSizeAndTimeToTheMillisecond) {
    EXPECT_CALL(*s3, HeadObject(_)).WillOnce([](const auto& request) {
        EXPECT_EQ(request.GetBucket(), "b");
        EXPECT_EQ(request.GetKey(), "dir/file name");
        HeadObjectResult result;
        result.SetContentLength(12345678901);
        result.SetLastModified(Aws::Utils::DateTime(static_cast<int64_t>(1445412480123)));
        return HeadObjectOutcome(result);
    });
    const auto entry = client->stat("dir/file name");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "dir/file name");
    EXPECT_EQ(entry->size, 12345678901);
    EXPECT_EQ(boost::posix_time::to_iso_extended_string(entry->lastModified), "2015-10-21T07:28:00.123000");
}

TEST_F(Stat, AnswersNothingForEveryKindOfNotFound) {
    const Aws::S3::S3Error errors[] = {s3Error(S3Errors::NO_SUCH_KEY), s3Error(S3Errors::NO_SUCH_BUCKET),
                                       s3Error(S3Errors::RESOURCE_NOT_FOUND, "", "No response body."),
                                       s3Error(S3Errors::UNKNOWN, "", "status 404")};
    for (const auto& error : errors) {
        EXPECT_CALL(*s3, HeadObject(_)).WillOnce([&](auto&) { return error; });
        LogCapture log({clientChannel}, allLevels);
        EXPECT_FALSE(client->stat("folder/"));
        ASSERT_EQ(log.records().size(), 4u);
        EXPECT_EQ(log.records()[2].level, 512);
        EXPECT_THAT(log.records()[3].text, Not(EndsWith(" [throw]")));
    }
}

TEST_F(Stat, RaisesARefusal) {
    EXPECT_CALL(*s3, HeadObject(_)).WillOnce([](auto&) { return s3Error(S3Errors::ACCESS_DENIED); });
    LogCapture log({clientChannel}, allLevels);
    expectFailure<PermissionDeniedException>(u"access_denied", [&] { client->stat("k"); });
    EXPECT_THAT(log.records().back().text, EndsWith(" [throw]"));
}

TEST_F(Stat, RaisesWhatTheRegionExplains) {
    EXPECT_CALL(*s3, HeadObject(_)).WillOnce([](auto&) { return s3Error(S3Errors::UNKNOWN); });
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) { return locatedIn("us-west-2"); });
    expectFailure<InvalidLocationException>(u"bad_region", [&] { client->stat("k"); });
}

class CheckRootValidity : public CloudClientTest {
protected:
    void headBucketIsDenied() {
        EXPECT_CALL(*s3, HeadBucket(_)).WillOnce([](const auto& request) {
            EXPECT_EQ(request.GetBucket(), "b");
            return s3Error(S3Errors::ACCESS_DENIED);
        });
    }

    void locationFailsWith(S3Errors type) {
        EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([type](auto&) { return s3Error(type); });
    }
};

TEST_F(CheckRootValidity, IsSatisfiedByHeadBucket) {
    EXPECT_CALL(*s3, HeadBucket(_)).Times(2).WillRepeatedly([](auto&) {
        return Aws::S3::Model::HeadBucketOutcome(Aws::S3::Model::HeadBucketResult());
    });
    LogCapture log({clientChannel}, 2);
    EXPECT_NO_THROW(client->checkRootValidity("/not/looked/at"));
    EXPECT_NO_THROW(client->checkRootValidity(""));
    ASSERT_EQ(log.records().size(), 2u);
    EXPECT_EQ(log.records()[0].text, " m_bucket=b");
}

TEST_F(CheckRootValidity, ForgivesADeniedHeadBucketInTheRightRegion) {
    headBucketIsDenied();
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) { return locatedIn("eu-west-3"); });
    LogCapture log({clientChannel}, 512);
    EXPECT_NO_THROW(client->checkRootValidity("/"));
    EXPECT_TRUE(log.records().empty());
}

TEST_F(CheckRootValidity, TakesAnEmptyLocationForTheRightOneWhenNoRegionIsConfigured) {
    client = clientWith({5, 0}, "");
    headBucketIsDenied();
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) {
        return Aws::S3::Model::GetBucketLocationOutcome(Aws::S3::Model::GetBucketLocationResult());
    });
    EXPECT_NO_THROW(client->checkRootValidity("/"));
}

TEST_F(CheckRootValidity, RefusesAnotherRegion) {
    headBucketIsDenied();
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) { return locatedIn("us-west-2"); });
    expectFailure<InvalidLocationException>(u"bad_region", [&] { client->checkRootValidity("/"); });
}

TEST_F(CheckRootValidity, RefusesAnyRegionWhenNoneIsConfigured) {
    client = clientWith({5, 0}, "");
    headBucketIsDenied();
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) { return locatedIn("us-west-2"); });
    expectFailure<InvalidLocationException>(u"bad_region", [&] { client->checkRootValidity("/"); });
}

TEST_F(CheckRootValidity, RefusesAnEmptyLocationForANamedRegion) {
    client = clientWith({5, 0}, "us-east-1");
    headBucketIsDenied();
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) {
        return Aws::S3::Model::GetBucketLocationOutcome(Aws::S3::Model::GetBucketLocationResult());
    });
    expectFailure<InvalidLocationException>(u"bad_region", [&] { client->checkRootValidity("/"); });
}

TEST_F(CheckRootValidity, CallsABucketInvalidWhenItsLocationIsUnknown) {
    for (const auto type : {S3Errors::NO_SUCH_BUCKET, S3Errors::RESOURCE_NOT_FOUND, S3Errors::UNKNOWN}) {
        headBucketIsDenied();
        locationFailsWith(type);
        expectFailure<InvalidLocationException>(u"invalid_bucket", [&] { client->checkRootValidity("/"); });
    }
}

TEST_F(CheckRootValidity, TranslatesTheLocationErrorOtherwise) {
    headBucketIsDenied();
    locationFailsWith(S3Errors::ACCESS_DENIED);
    LogCapture log({clientChannel}, 512);
    expectFailure<PermissionDeniedException>(u"access_denied", [&] { client->checkRootValidity("/"); });
    EXPECT_TRUE(log.records().empty());
}

TEST_F(CheckRootValidity, CallsNoBucketInvalidForAnythingElseThatIsMissing) {
    headBucketIsDenied();
    locationFailsWith(S3Errors::NO_SUCH_KEY);
    expectFailure<ResourceNotFoundException>(u"no_such_key", [&] { client->checkRootValidity("/"); });
}

TEST_F(CheckRootValidity, AsksForTheLocationAgainWhenItsErrorExplainsNothing) {
    headBucketIsDenied();
    EXPECT_CALL(*s3, GetBucketLocation(_))
        .WillOnce([](auto&) { return s3Error(S3Errors::SLOW_DOWN); })
        .WillOnce([](auto&) { return locatedIn("us-west-2"); });
    expectFailure<InvalidLocationException>(u"bad_region", [&] { client->checkRootValidity("/"); });
}
