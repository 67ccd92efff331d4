#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "conformance/targets/EmbeddedTarget.hpp"
#include "support/plugin/CloudFailure.hpp"

using namespace testsupport;
using namespace storage::cloudprovider;
using s3server::Fault;

/// A server that fails as planned, and a client of two attempts whose SDK doesn't retry.
class Faults : public ::testing::Test {
protected:
    Faults() { target.server().putObject(EmbeddedTarget::bucketName, "object", std::string(100000, 'x')); }

    std::string get() {
        std::ostringstream out;
        client->download("object", out, 0, 0);
        return out.str();
    }

    EmbeddedTarget target{Way::HttpPath};
    std::unique_ptr<CloudClient> client = target.client();
};

TEST_F(Faults, ADownloadSurvivesOneOfEveryKind) {
    const Fault faults[] = {Fault::status(503, "SlowDown"), Fault::cutAfter(1000), Fault::reset(),
                            Fault::resetAfterHeaders(), Fault::closeWithoutReply()};
    for (const auto& fault : faults) {
        target.server().plan(fault);
        EXPECT_EQ(get().size(), 100000u);
        EXPECT_EQ(target.server().plannedFaultsLeft(), 0u);
    }
}

TEST_F(Faults, ACutBodyIsNeverTakenForTheObject) {
    target.server().plan(Fault::cutAfter(99999).on("GetObject").times(2));
    EXPECT_THROW(get(), UnknownErrorException);
    EXPECT_EQ(target.server().plannedFaultsLeft(), 0u);
}

TEST_F(Faults, AnErrorInACompletionWithStatus200IsRaised) {
    const auto id = client->startMultipartUpload("new", "");
    std::istringstream in("content");
    PartInfo part{0, 0, 7, ""};
    part.Tag = client->uploadPart("new", id, part, in);
    target.server().plan(Fault::errorIn200("InternalError").on("CompleteMultipartUpload"));
    EXPECT_THROW(client->completeMultipartUpload("new", id, {part}), UnknownErrorException);
    EXPECT_FALSE(client->stat("new"));
    EXPECT_NO_THROW(client->completeMultipartUpload("new", id, {part}));
}

TEST_F(Faults, AnUploadIsNotRepeatedByTheClient) {
    target.server().plan(Fault::status(500, "InternalError").on("PutObject"));
    target.server().forgetRequests();
    std::istringstream in("content");
    EXPECT_THROW(client->upload("new", in, 7), UnknownErrorException);
    ASSERT_EQ(target.server().requests().size(), 2u);
    EXPECT_EQ(target.server().requests()[1].operation, "GetBucketLocation");
}
