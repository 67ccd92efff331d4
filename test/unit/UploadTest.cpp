#include <sstream>

#include "unit/CloudClientTest.hpp"

using namespace testsupport;
using namespace storage::cloudprovider;
using Aws::S3::Model::PutObjectOutcome;
using Aws::S3::Model::PutObjectResult;
using ::testing::_;

class Upload : public CloudClientTest {};

TEST_F(Upload, SendsTheBucketTheKeyAndTheStreamAndNothingElse) {
    std::istringstream in("content");
    EXPECT_CALL(*s3, PutObject(_)).WillOnce([&](const auto& request) {
        EXPECT_EQ(request.GetBucket(), "b");
        EXPECT_EQ(request.GetKey(), "k");
        EXPECT_EQ(request.GetBody()->rdbuf(), in.rdbuf());
        EXPECT_FALSE(request.ContentLengthHasBeenSet());
        return PutObjectOutcome(PutObjectResult());
    });
    LogCapture log({clientChannel}, 2);
    client->upload("k", in, 12345);
    ASSERT_EQ(log.records().size(), 1u);
    EXPECT_EQ(log.records()[0].text, " m_bucket=b key=k");
}

TEST_F(Upload, LeavesThePositionOfTheStreamAsTheSdkLeftIt) {
    std::istringstream in("content");
    EXPECT_CALL(*s3, PutObject(_)).WillOnce([](const auto& request) {
        request.GetBody()->seekg(4);
        return PutObjectOutcome(PutObjectResult());
    });
    client->upload("k", in, 0);
    std::string rest;
    in >> rest;
    EXPECT_EQ(rest, "ent");
}

TEST_F(Upload, RaisesAFailureAtOnce) {
    std::istringstream in("content");
    EXPECT_CALL(*s3, PutObject(_)).WillOnce([](auto&) { return s3Error(S3Errors::ACCESS_DENIED); });
    LogCapture log({clientChannel}, 512);
    expectFailure<PermissionDeniedException>(u"access_denied", [&] { client->upload("k", in, 0); });
    EXPECT_EQ(log.records().size(), 1u);
}
