#include <aws/core/client/DefaultRetryStrategy.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "conformance/targets/EmbeddedTarget.hpp"
#include "support/plugin/CloudFailure.hpp"
#include "support/servers/Relay.hpp"

using namespace testsupport;
using namespace storage::cloudprovider;
using ::testing::Eq;
using ::testing::Optional;

namespace {

constexpr std::size_t contentSize = 300000;

}  // namespace

/// A connection to the server that breaks while the client is still sending.
class BrokenUploads : public ::testing::TestWithParam<Way> {
protected:
    BrokenUploads() {
        server.putObject(EmbeddedTarget::bucketName, "object", "before");
        const std::string scheme = overTls(GetParam()) ? "https://" : "http://";
        configuration.endpointOverride = scheme + relay->endpoint();
    }

    std::unique_ptr<CloudClient> client() const { return target.clientWith(configuration); }

    static void put(CloudClient& client, const std::string& content) {
        std::istringstream in(content);
        client.upload("object", in, content.size());
    }

    std::optional<std::string> stored() const { return server.object(EmbeddedTarget::bucketName, "object"); }

    /// Nothing can arrive any more afterwards.
    void endEverything() {
        relay.reset();
        server.stop();
    }

    EmbeddedTarget target{GetParam()};
    s3server::Server& server = target.server();
    std::unique_ptr<Relay> relay = std::make_unique<Relay>(server.port());
    Aws::Client::ClientConfiguration configuration = target.configuration();
    const std::string content = std::string(contentSize, 'n');
};

TEST_P(BrokenUploads, LeaveTheObjectAsItWasWhereverTheyBreak) {
    for (const auto how : {Relay::Break::Close, Relay::Break::Reset}) {
        for (const std::size_t carried : {std::size_t{0}, std::size_t{1}, std::size_t{300}, std::size_t{2000},
                                          std::size_t{100000}, contentSize}) {
            relay->breakNext({how, carried});
            expectFailure<UnknownErrorException>(noIdentifier, [&] { put(*client(), content); });
            EXPECT_THAT(stored(), Optional(Eq("before"))) << carried;
        }
    }
    endEverything();
    EXPECT_THAT(stored(), Optional(Eq("before")));
}

TEST_P(BrokenUploads, AreDoneAgainOnAnotherConnection) {
    const auto same = client();
    relay->breakNext({Relay::Break::Reset, 100000});
    EXPECT_THROW(put(*same, content), UnknownErrorException);
    put(*same, content);
    EXPECT_THAT(stored(), Optional(Eq(content)));
    EXPECT_EQ(relay->connections(), 2u);
}

TEST_P(BrokenUploads, AreRetriedBeneathFromTheFirstByte) {
    configuration.retryStrategy = std::make_shared<Aws::Client::DefaultRetryStrategy>(1, 1);
    relay->breakNext({Relay::Break::Reset, 100000});
    put(*client(), content);
    EXPECT_THAT(stored(), Optional(Eq(content)));
    EXPECT_EQ(relay->connections(), 2u);
}

TEST_P(BrokenUploads, OfAPartLeaveNothingToComplete) {
    const auto id = client()->startMultipartUpload("object", "");
    PartInfo part{0, 0, contentSize, "\"of no part\""};
    std::istringstream in(content);
    relay->breakNext({Relay::Break::Close, 100000});
    EXPECT_THROW(client()->uploadPart("object", id, part, in), UnknownErrorException);
    EXPECT_THROW(client()->completeMultipartUpload("object", id, {part}), UnknownErrorException);
    EXPECT_THAT(stored(), Optional(Eq("before")));
    part.Tag = client()->uploadPart("object", id, part, in);
    client()->completeMultipartUpload("object", id, {part});
    EXPECT_THAT(stored(), Optional(Eq(content)));
}

TEST_P(BrokenUploads, ThatStallAreGivenUpAndStoreNothing) {
    configuration.requestTimeoutMs = 2000;
    configuration.lowSpeedLimit = 1'000'000'000;  // so that what came before a silence doesn't count for long
    relay->breakNext({Relay::Break::Stall, 100000});
    const std::string moreThanBuffered(std::size_t{16} * 1024 * 1024, 'n');
    expectFailure<UnknownErrorException>(noIdentifier, [&] { put(*client(), moreThanBuffered); });
    endEverything();
    EXPECT_THAT(stored(), Optional(Eq("before")));
}

INSTANTIATE_TEST_SUITE_P(EmbeddedServer, BrokenUploads, ::testing::Values(Way::HttpPath, Way::HttpsPath),
                         [](const auto& way) { return nameOf(way.param); });
