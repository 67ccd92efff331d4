#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "conformance/CloudClientConformance.hpp"
#include "conformance/targets/EmbeddedTarget.hpp"
#include "support/plugin/CloudFailure.hpp"

using namespace testsupport;
using namespace storage::cloudprovider;

namespace {

std::vector<TargetChoice> embeddedServers() {
    std::vector<TargetChoice> choices;
    for (const auto way : everyWay)
        choices.push_back({nameOf(way), [way] { return std::make_unique<EmbeddedTarget>(way); }});
    return choices;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(EmbeddedServer, CloudClientConformance, ::testing::ValuesIn(embeddedServers()),
                         [](const auto& choice) { return choice.param.name; });

/// What only a server in this process can show.
class CloudClientOnEmbeddedServer : public ::testing::TestWithParam<Way> {
protected:
    EmbeddedTarget target{GetParam()};
};

TEST_P(CloudClientOnEmbeddedServer, RefusesAnotherRegion) {
    target.server().createBucket("elsewhere", "us-west-2");
    expectFailure<InvalidLocationException>(u"bad_region",
                                            [&] { target.clientOf("elsewhere")->checkRootValidity("/"); });
}

TEST_P(CloudClientOnEmbeddedServer, TakesTemporaryKeysWithTheirToken) {
    auto access = target.access();
    access.keys = EmbeddedTarget::temporaryKeys();
    EXPECT_NO_THROW(cloudClient(access)->checkRootValidity("/"));
    access.keys.token = "another-token";
    EXPECT_THROW(cloudClient(access)->checkRootValidity("/"), CloudException);
}

TEST_P(CloudClientOnEmbeddedServer, SignsThePayloadOnlyWhereNobodyElseProtectsIt) {
    std::istringstream in("content");
    target.client()->upload("k", in, 7);
    const auto digest = target.server().requests().back().header("x-amz-content-sha256");
    if (overTls(GetParam())) {
        EXPECT_EQ(digest, "UNSIGNED-PAYLOAD");
    } else {
        EXPECT_EQ(digest, "ed7002b439e9ac845f22357d822bac1444730fbdb6016d3ec9432297b9ec9f73");
    }
}

TEST_P(CloudClientOnEmbeddedServer, AddressesTheBucketTheWayTheEndpointAllows) {
    target.client()->stat("k");
    const auto request = target.server().requests().back();
    const auto port = std::to_string(target.server().port());
    if (byVirtualHost(GetParam())) {
        EXPECT_EQ(request.target, "/k");
        EXPECT_EQ(request.header("host"), "conformance.s3.localhost:" + port);
    } else {
        EXPECT_EQ(request.target, "/conformance/k");
        EXPECT_EQ(request.header("host"), "127.0.0.1:" + port);
    }
}

TEST_P(CloudClientOnEmbeddedServer, UsesOneConnectionForOneCallAfterAnother) {
    const auto client = target.client();
    for (int i = 0; i < 5; ++i) {
        std::istringstream in("content");
        client->upload("k", in, 7);
        std::ostringstream out;
        client->download("k", out, 0, 0);
    }
    EXPECT_EQ(target.server().connections(), 1u);
}

TEST_P(CloudClientOnEmbeddedServer, NeverOpensMoreConnectionsThanAllowed) {
    auto configuration = target.configuration();
    configuration.maxConnections = 2;
    const auto client = target.clientWith(configuration);
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 5; ++i)
                client->stat("missing");
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_LE(target.server().connections(), 2u);
    EXPECT_EQ(target.server().requests().size(), 40u);
}

INSTANTIATE_TEST_SUITE_P(EmbeddedServer, CloudClientOnEmbeddedServer, ::testing::ValuesIn(everyWay),
                         [](const auto& way) { return nameOf(way.param); });
