#include "AwsS3ClientFactory.hpp"
#include "support/plugin/FactoryTest.hpp"
#include "unit/CloudClientTest.hpp"

using namespace testsupport;
using namespace storage::s3provider;
using ::testing::IsEmpty;
using ::testing::Property;
using ::testing::Return;

namespace {

class Region : public FactoryTest {};

TEST_F(Region, IsUnknownWithoutAnyoneNamingIt) {
    EXPECT_EQ(regionFromEnvironment(), "");
}

TEST_F(Region, IsTheDefaultRegionBeforeTheRegion) {
    environment.set("AWS_REGION", "us-west-2");
    EXPECT_EQ(regionFromEnvironment(), "us-west-2");
    environment.set("AWS_DEFAULT_REGION", "eu-west-1");
    EXPECT_EQ(regionFromEnvironment(), "eu-west-1");
    environment.set("AWS_DEFAULT_REGION", "");
    EXPECT_EQ(regionFromEnvironment(), "us-west-2");
}

TEST_F(Region, IsThatOfTheCredentialsFileBeforeTheConfigFile) {
    write(".aws/config", "[default]\nregion = eu-central-1\n");
    EXPECT_EQ(regionFromEnvironment(), "eu-central-1");
    write(".aws/credentials", "[default]\nregion = ap-south-1\n");
    EXPECT_EQ(regionFromEnvironment(), "ap-south-1");
    environment.set("AWS_REGION", "us-west-2");
    EXPECT_EQ(regionFromEnvironment(), "us-west-2");
}

TEST_F(Region, IsThatOfTheChosenProfile) {
    write(".aws/credentials", "[default]\nregion = ap-south-1\n[work]\nregion = sa-east-1\n");
    environment.set("AWS_PROFILE", "work");
    EXPECT_EQ(regionFromEnvironment(), "sa-east-1");
    environment.set("AWS_PROFILE", "");
    EXPECT_EQ(regionFromEnvironment(), "ap-south-1");
    environment.set("AWS_PROFILE", "nobody");
    EXPECT_EQ(regionFromEnvironment(), "");
}

TEST_F(Region, IsNotThatOfTheSdksDefaultProfile) {
    write(".aws/credentials", "[default]\nregion = ap-south-1\n[work]\nregion = sa-east-1\n");
    environment.set("AWS_DEFAULT_PROFILE", "work");
    EXPECT_EQ(regionFromEnvironment(), "ap-south-1");
}

TEST_F(Region, OfAProfileIsLookedUpByItsBareNameInBothFiles) {
    write(".aws/config", "[profile work]\nregion = eu-west-2\n[home]\nregion = eu-north-1\n");
    environment.set("AWS_PROFILE", "home");
    EXPECT_EQ(regionFromEnvironment(), "eu-north-1");
    environment.set("AWS_PROFILE", "work");
    EXPECT_EQ(regionFromEnvironment(), "");
}

TEST_F(Region, OfAFileThatIsNotThereIsUnknown) {
    EXPECT_EQ(regionFromProfileFile((home.path() / "none").string(), "default"), "");
    const auto file = write("credentials", "[default]\naws_access_key_id = x\n");
    EXPECT_EQ(regionFromProfileFile(file.string(), "default"), "");
    EXPECT_EQ(regionFromProfileFile(file.string(), "other"), "");
    EXPECT_THAT(log.records(), IsEmpty());
}

class BucketRegion : public ::testing::Test {
protected:
    std::string answeredBy(const Aws::S3::Model::GetBucketLocationOutcome& outcome) {
        EXPECT_CALL(
            s3, GetBucketLocation(Property(&Aws::S3::Model::GetBucketLocationRequest::GetBucket, "bucket")))
            .WillOnce(Return(outcome));
        return queryBucketRegion(s3, "bucket");
    }

    ::testing::StrictMock<MockS3Client> s3;
};

TEST_F(BucketRegion, IsWhatS3Tells) {
    EXPECT_EQ(answeredBy(locatedIn("eu-west-3")), "eu-west-3");
    EXPECT_EQ(answeredBy(locatedIn("EU")), "EU");
}

TEST_F(BucketRegion, IsUsEast1WithoutConstraint) {
    EXPECT_EQ(answeredBy(Aws::S3::Model::GetBucketLocationResult()), "us-east-1");
}

TEST_F(BucketRegion, IsUnknownWhenS3Refuses) {
    EXPECT_EQ(answeredBy(s3Error(Aws::S3::S3Errors::ACCESS_DENIED, "AccessDenied")), "");
    EXPECT_EQ(answeredBy(s3Error(Aws::S3::S3Errors::NO_SUCH_BUCKET, "NoSuchBucket")), "");
    EXPECT_EQ(answeredBy(s3Error(Aws::S3::S3Errors::NETWORK_CONNECTION)), "");
}

}  // namespace
