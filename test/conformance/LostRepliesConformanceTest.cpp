#include <aws/core/client/DefaultRetryStrategy.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <thread>

#include "DiagnosticRecord.hpp"
#include "conformance/targets/EmbeddedTarget.hpp"
#include "support/plugin/CloudFailure.hpp"
#include "support/plugin/LogCapture.hpp"

using namespace testsupport;
using namespace storage::cloudprovider;
using s3server::Fault;
using ::testing::ElementsAre;
using ::testing::Eq;
using ::testing::HasSubstr;
using ::testing::Optional;

/// A server that does what it is asked to, and whose answer is lost. Every call has a client of its own, and
/// so a new connection: that nobody repeats the request is sure only there.
class LostReplies : public ::testing::Test {
protected:
    void lose(const char* operation) { server.plan(Fault::closeWithoutReply().on(operation)); }

    std::unique_ptr<CloudClient> client() const { return target.clientWith(configuration); }

    void put() {
        std::istringstream in("content");
        client()->upload("object", in, 7);
    }

    PartInfo part(const std::string& id) {
        std::istringstream in("content");
        PartInfo info{0, 0, 7, ""};
        info.Tag = client()->uploadPart("object", id, info, in);
        return info;
    }

    std::optional<std::string> stored() const { return server.object(EmbeddedTarget::bucketName, "object"); }

    std::vector<std::string> operations() const {
        std::vector<std::string> names;
        for (const auto& request : server.requests())
            names.push_back(request.operation);
        return names;
    }

    EmbeddedTarget target{Way::HttpPath};
    s3server::Server& server = target.server();
    Aws::Client::ClientConfiguration configuration = target.configuration();
};

TEST_F(LostReplies, MakeAnUploadFailThoughTheObjectIsThere) {
    lose("PutObject");
    expectFailure<UnknownErrorException>(noIdentifier, [&] { put(); });
    EXPECT_THAT(stored(), Optional(Eq("content")));
    EXPECT_THAT(operations(), ElementsAre("PutObject", "GetBucketLocation"));
    EXPECT_NE(server.requests()[0].connection, server.requests()[1].connection);
}

TEST_F(LostReplies, DontKeepAnUploadThatWasGivenUpFromBeingStoredLater) {
    configuration.requestTimeoutMs = 2000;
    server.plan(Fault::stall().on("PutObject"));
    EXPECT_THROW(put(), UnknownErrorException);
    EXPECT_FALSE(stored());
    server.releaseStalled();
    while (!stored())
        std::this_thread::yield();
    EXPECT_THAT(stored(), Optional(Eq("content")));
}

TEST_F(LostReplies, MakeARemovalFailThoughTheObjectIsGone) {
    server.putObject(EmbeddedTarget::bucketName, "object", "content");
    lose("DeleteObject");
    expectFailure<UnknownErrorException>(noIdentifier, [&] { client()->remove("object"); });
    EXPECT_FALSE(stored());
    EXPECT_NO_THROW(client()->remove("object"));
}

TEST_F(LostReplies, MakeACompletionFailThoughTheObjectIsThere) {
    const auto id = client()->startMultipartUpload("object", "");
    const auto only = part(id);
    lose("CompleteMultipartUpload");
    expectFailure<UnknownErrorException>(noIdentifier,
                                         [&] { client()->completeMultipartUpload("object", id, {only}); });
    EXPECT_THAT(stored(), Optional(Eq("content")));
    EXPECT_EQ(server.openUploads(EmbeddedTarget::bucketName), 0u);
}

TEST_F(LostReplies, LeaveACompletedUploadThatCantBeCompletedOrAbortedAgain) {
    const auto id = client()->startMultipartUpload("object", "");
    const auto only = part(id);
    lose("CompleteMultipartUpload");
    EXPECT_THROW(client()->completeMultipartUpload("object", id, {only}), UnknownErrorException);
    const LogCapture log(clientChannel, storage::s3provider::LogFailedRequests);
    expectFailure<UnknownErrorException>(noIdentifier,
                                         [&] { client()->completeMultipartUpload("object", id, {only}); });
    expectFailure<UnknownErrorException>(noIdentifier, [&] { client()->abortMultipartUpload("object", id); });
    EXPECT_THAT(log.texts(), ElementsAre(HasSubstr("NoSuchUpload"), HasSubstr("NoSuchUpload")));
    EXPECT_THAT(stored(), Optional(Eq("content")));
}

TEST_F(LostReplies, MakeAnAbortFailThoughTheUploadIsGone) {
    const auto id = client()->startMultipartUpload("object", "");
    lose("AbortMultipartUpload");
    expectFailure<UnknownErrorException>(noIdentifier, [&] { client()->abortMultipartUpload("object", id); });
    EXPECT_EQ(server.openUploads(EmbeddedTarget::bucketName), 0u);
    expectFailure<UnknownErrorException>(noIdentifier, [&] { client()->abortMultipartUpload("object", id); });
}

TEST_F(LostReplies, LeaveAnUploadThatNobodyHasTheIdOf) {
    lose("CreateMultipartUpload");
    EXPECT_THROW(client()->startMultipartUpload("object", ""), UnknownErrorException);
    EXPECT_EQ(server.openUploads(EmbeddedTarget::bucketName), 1u);
}

TEST_F(LostReplies, DontKeepAPartFromBeingSentAgain) {
    const auto id = client()->startMultipartUpload("object", "");
    lose("UploadPart");
    EXPECT_THROW(part(id), UnknownErrorException);
    client()->completeMultipartUpload("object", id, {part(id)});
    EXPECT_THAT(stored(), Optional(Eq("content")));
}

TEST_F(LostReplies, OnAConnectionUsedBeforeHaveARequestWithoutBodyRepeated) {
    const auto same = client();
    same->stat("object");
    lose("DeleteObject");
    EXPECT_NO_THROW(same->remove("object"));
    EXPECT_THAT(operations(), ElementsAre("HeadObject", "DeleteObject", "DeleteObject"));
}

class LostRepliesWithRetries : public LostReplies {
protected:
    LostRepliesWithRetries() {
        configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(1, 1);
    }
};

TEST_F(LostRepliesWithRetries, OfUploadsAndRemovalsGoUnnoticed) {
    lose("PutObject");
    put();
    EXPECT_THAT(stored(), Optional(Eq("content")));
    lose("DeleteObject");
    client()->remove("object");
    EXPECT_FALSE(stored());
    EXPECT_THAT(operations(), ElementsAre("PutObject", "PutObject", "DeleteObject", "DeleteObject"));
}

TEST_F(LostRepliesWithRetries, OfACompletionLookAsIfTheUploadHadNeverBeen) {
    const auto id = client()->startMultipartUpload("object", "");
    const auto only = part(id);
    lose("CompleteMultipartUpload");
    const LogCapture log(clientChannel, storage::s3provider::LogFailedRequests);
    expectFailure<UnknownErrorException>(noIdentifier,
                                         [&] { client()->completeMultipartUpload("object", id, {only}); });
    EXPECT_THAT(log.texts(), ElementsAre(HasSubstr("NoSuchUpload")));
    EXPECT_THAT(stored(), Optional(Eq("content")));
}
