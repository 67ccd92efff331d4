#include "S3ErrorTranslation.hpp"

#include <aws/s3/model/DeleteObjectResult.h>
#include <aws/s3/model/HeadObjectResult.h>

#include <sstream>

#include "unit/CloudClientTest.hpp"

using namespace testsupport;
using namespace storage::cloudprovider;
using Aws::S3::S3Errors;
using storage::s3provider::describeOutcome;
using storage::s3provider::errorTypeWord;
using ::testing::_;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

/// Errors reach the translation through `remove`, whose failure is nothing but the failure step.
class ErrorTranslation : public CloudClientTest {
protected:
    void removeFailsWith(const Aws::S3::S3Error& error) {
        EXPECT_CALL(*s3, DeleteObject(_)).WillOnce([error](auto&) { return error; });
    }

    template <class Failure>
    void expectRemoveToThrow(const std::optional<std::u16string>& identifier) {
        expectFailure<Failure>(identifier, [&] { client->remove("k"); });
    }
};

TEST_F(ErrorTranslation, GoesByTheTypeWhateverNameAndMessageSay) {
    removeFailsWith(s3Error(S3Errors::NO_SUCH_KEY, "InvalidAccessKeyId", "403 and 404"));
    expectRemoveToThrow<ResourceNotFoundException>(u"no_such_key");
}

TEST_F(ErrorTranslation, PrefersTheTypeToA403InTheMessage) {
    removeFailsWith(s3Error(S3Errors::INVALID_CLIENT_TOKEN_ID, "", "HTTP 403"));
    expectRemoveToThrow<InvalidCredentialsException>(u"invalid_client_token_id");
}

TEST_F(ErrorTranslation, KnowsSixTypes) {
    removeFailsWith(s3Error(S3Errors::MISSING_AUTHENTICATION_TOKEN));
    expectRemoveToThrow<InvalidCredentialsException>(u"missing_authentication_token");
    removeFailsWith(s3Error(S3Errors::ACCESS_DENIED));
    expectRemoveToThrow<PermissionDeniedException>(u"access_denied");
    removeFailsWith(s3Error(S3Errors::RESOURCE_NOT_FOUND));
    expectRemoveToThrow<ResourceNotFoundException>(noIdentifier);
    removeFailsWith(s3Error(S3Errors::NO_SUCH_BUCKET));
    expectRemoveToThrow<ResourceNotFoundException>(u"no_such_bucket");
}

TEST_F(ErrorTranslation, TakesUnknownKeysAndSignaturesForRefusedPermission) {
    removeFailsWith(s3Error(S3Errors::UNKNOWN, "InvalidAccessKeyId"));
    expectRemoveToThrow<PermissionDeniedException>(u"invalid_access_key_id");
    removeFailsWith(s3Error(S3Errors::UNKNOWN, "SignatureDoesNotMatch"));
    expectRemoveToThrow<PermissionDeniedException>(u"signature_does_not_match");
}

TEST_F(ErrorTranslation, PrefersTheNameToA404InTheMessage) {
    removeFailsWith(s3Error(S3Errors::UNKNOWN, "InvalidAccessKeyId", "404"));
    expectRemoveToThrow<PermissionDeniedException>(u"invalid_access_key_id");
}

TEST_F(ErrorTranslation, ComparesNamesWholeAndByCase) {
    for (const char* name :
         {"invalidAccessKeyId", "InvalidAccessKeyIdX", "InvalidAccessKeyI", "signaturedoesnotmatch"}) {
        removeFailsWith(s3Error(S3Errors::UNKNOWN, name));
        EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) { return locatedIn("eu-west-3"); });
        expectRemoveToThrow<UnknownErrorException>(noIdentifier);
    }
}

TEST_F(ErrorTranslation, LooksFor404InTheMessageBefore403) {
    removeFailsWith(s3Error(S3Errors::UNKNOWN, "Odd", "first 403, then 404"));
    expectRemoveToThrow<ResourceNotFoundException>(noIdentifier);
    removeFailsWith(s3Error(S3Errors::UNKNOWN, "Odd", "code4034"));
    expectRemoveToThrow<PermissionDeniedException>(noIdentifier);
}

TEST_F(ErrorTranslation, AsksForTheRegionOnceWhenNothingElseExplainsTheFailure) {
    removeFailsWith(s3Error(S3Errors::SLOW_DOWN, "SlowDown", "Reduce your request rate"));
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](const auto& request) {
        EXPECT_EQ(request.GetBucket(), "b");
        return locatedIn("eu-west-3");
    });
    expectRemoveToThrow<UnknownErrorException>(noIdentifier);
}

TEST_F(ErrorTranslation, BlamesTheRegionWhenTheBucketLivesElsewhere) {
    removeFailsWith(s3Error(S3Errors::UNKNOWN));
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) { return locatedIn("us-west-2"); });
    expectRemoveToThrow<InvalidLocationException>(u"bad_region");
}

TEST_F(ErrorTranslation, BlamesTheRegionWhenNoneIsConfigured) {
    client = clientWith({5, 0}, "");
    removeFailsWith(s3Error(S3Errors::UNKNOWN));
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) { return locatedIn("eu-west-3"); });
    expectRemoveToThrow<InvalidLocationException>(u"bad_region");
}

TEST_F(ErrorTranslation, TakesAnEmptyLocationForTheEmptyName) {
    client = clientWith({5, 0}, "us-east-1");
    removeFailsWith(s3Error(S3Errors::UNKNOWN));
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) {
        return Aws::S3::Model::GetBucketLocationOutcome(Aws::S3::Model::GetBucketLocationResult());
    });
    expectRemoveToThrow<InvalidLocationException>(u"bad_region");
}

TEST_F(ErrorTranslation, FindsAnEmptyLocationEqualToAnEmptyRegion) {
    client = clientWith({5, 0}, "");
    removeFailsWith(s3Error(S3Errors::UNKNOWN));
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) {
        return Aws::S3::Model::GetBucketLocationOutcome(Aws::S3::Model::GetBucketLocationResult());
    });
    expectRemoveToThrow<UnknownErrorException>(noIdentifier);
}

TEST_F(ErrorTranslation, TakesNoNameOfARegionForAnother) {
    client = clientWith({5, 0}, "eu-west-1");
    removeFailsWith(s3Error(S3Errors::UNKNOWN));
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) { return locatedIn("EU"); });
    expectRemoveToThrow<InvalidLocationException>(u"bad_region");
}

TEST_F(ErrorTranslation, GivesUpWhenTheLocationIsRefused) {
    removeFailsWith(s3Error(S3Errors::UNKNOWN));
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([](auto&) { return s3Error(S3Errors::ACCESS_DENIED); });
    expectRemoveToThrow<UnknownErrorException>(noIdentifier);
}

TEST_F(ErrorTranslation, LeavesTheErrorInTheLogBeforeItThrows) {
    const auto error = s3Error(S3Errors::NO_SUCH_KEY, "NoSuchKey", "gone");
    removeFailsWith(error);
    LogCapture log({clientChannel}, 512);
    expectRemoveToThrow<ResourceNotFoundException>(u"no_such_key");
    std::ostringstream text;
    text << "Cloud operation failed: " << static_cast<const Aws::Client::AWSError<S3Errors>&>(error);
    EXPECT_THAT(levelsAndTexts(log), ElementsAre(Pair(512, text.str())));
}

TEST_F(ErrorTranslation, DoesNotLogTheFailureOfTheRegionCheck) {
    removeFailsWith(s3Error(S3Errors::UNKNOWN));
    LogCapture log({clientChannel}, 512);
    EXPECT_CALL(*s3, GetBucketLocation(_)).WillOnce([&](auto&) {
        EXPECT_EQ(log.records().size(), 1u) << "the record comes before the translation";
        return s3Error(S3Errors::ACCESS_DENIED);
    });
    expectRemoveToThrow<UnknownErrorException>(noIdentifier);
    EXPECT_EQ(log.records().size(), 1u);
}

TEST_F(ErrorTranslation, ThrowsTheSameWithTheRecordDisabled) {
    removeFailsWith(s3Error(S3Errors::NO_SUCH_KEY));
    LogCapture log({clientChannel}, allLevels & ~(512u | 32u | 2u));
    expectRemoveToThrow<ResourceNotFoundException>(u"no_such_key");
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST(CloudException, HasFixedMessages) {
    EXPECT_STREQ(InvalidCredentialsException(std::nullopt).what(), "Invalid Cloud credentials");
    EXPECT_STREQ(InvalidLocationException(std::nullopt).what(), "Invalid Cloud location");
    EXPECT_STREQ(PermissionDeniedException(std::nullopt).what(),
                 "Permission for the Cloud resource has been denied");
    EXPECT_STREQ(ResourceNotFoundException(std::nullopt).what(), "Cloud Resource not found");
    EXPECT_STREQ(UnknownErrorException(std::nullopt).what(), "Unknown error");
}

TEST(DescribeOutcome, IsOneFixedTextForASuccess) {
    const Aws::S3::Model::HeadObjectOutcome success{Aws::S3::Model::HeadObjectResult()};
    EXPECT_EQ(describeOutcome(success), "Successful operation");
}

TEST(DescribeOutcome, NamesTheErrorItsTypeAndItsMessage) {
    const Aws::S3::Model::HeadObjectOutcome failure{s3Error(S3Errors::NO_SUCH_KEY, "NoSuchKey", "M")};
    EXPECT_EQ(describeOutcome(failure), "NoSuchKey(NO_SUCH_KEY):M");
}

TEST(DescribeOutcome, HasNoWordForResourceNotFound) {
    const Aws::S3::Model::HeadObjectOutcome failure{
        s3Error(S3Errors::RESOURCE_NOT_FOUND, "", "No response body.")};
    EXPECT_EQ(describeOutcome(failure), "(UNKNOWN):No response body.");
}

TEST(ErrorTypeWord, KnowsFiveTypesByTheirNumbers) {
    EXPECT_STREQ(errorTypeWord(static_cast<S3Errors>(3)), "INVALID_CLIENT_TOKEN_ID");
    EXPECT_STREQ(errorTypeWord(static_cast<S3Errors>(8)), "MISSING_AUTHENTICATION_TOKEN");
    EXPECT_STREQ(errorTypeWord(static_cast<S3Errors>(15)), "ACCESS_DENIED");
    EXPECT_STREQ(errorTypeWord(static_cast<S3Errors>(132)), "NO_SUCH_BUCKET");
    EXPECT_STREQ(errorTypeWord(static_cast<S3Errors>(133)), "NO_SUCH_KEY");
    for (const int other : {0, 16, 22, 23, 99, 100, 131, 134}) {
        EXPECT_STREQ(errorTypeWord(static_cast<S3Errors>(other)), "UNKNOWN") << other;
    }
}
