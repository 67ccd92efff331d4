#include "unit/CloudClientTest.hpp"

using namespace testsupport;
using namespace storage::cloudprovider;
using Aws::S3::Model::DeleteObjectOutcome;
using Aws::S3::Model::DeleteObjectResult;
using ::testing::_;
using ::testing::EndsWith;

class Remove : public CloudClientTest {};

TEST_F(Remove, SendsOneRequestForExactlyTheKey) {
    EXPECT_CALL(*s3, DeleteObject(_)).WillOnce([](const auto& request) {
        EXPECT_EQ(request.GetBucket(), "b");
        EXPECT_EQ(request.GetKey(), "dir/");
        return DeleteObjectOutcome(DeleteObjectResult());
    });
    LogCapture log({clientChannel}, 2);
    client->remove("dir/");
    ASSERT_EQ(log.records().size(), 1u);
    EXPECT_EQ(log.records()[0].text, " m_bucket=b key=dir/");
}

TEST_F(Remove, ReportsSuccessForAKeyThatNeverExisted) {
    EXPECT_CALL(*s3, DeleteObject(_)).WillOnce([](auto&) {
        return DeleteObjectOutcome(DeleteObjectResult());
    });
    EXPECT_NO_THROW(client->remove("never"));
}

TEST_F(Remove, RaisesARefusal) {
    EXPECT_CALL(*s3, DeleteObject(_)).WillOnce([](auto&) { return s3Error(S3Errors::ACCESS_DENIED); });
    LogCapture log({clientChannel}, allLevels);
    expectFailure<PermissionDeniedException>(u"access_denied", [&] { client->remove("k"); });
    EXPECT_THAT(log.records().back().text, EndsWith(" [throw]"));
}
