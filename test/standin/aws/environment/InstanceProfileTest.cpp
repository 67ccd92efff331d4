#include <aws/core/auth/AWSCredentialsProvider.h>

#include <atomic>
#include <thread>

#include "EnvironmentTest.hpp"
#include "support/servers/HeldPort.hpp"

using Aws::Auth::InstanceProfileCredentialsProvider;
using testsupport::Script;
using testsupport::ScriptedServer;
using testsupport::Step;

namespace {

/// In milliseconds: no time at all, so that every request asks anew.
constexpr long alwaysRefresh = -1;

const char* const nobody = ":";

class InstanceProfile : public EnvironmentTest {
protected:
    InstanceProfile() { useServiceAt(service.endpoint()); }

    void useServiceAt(const std::string& endpoint) {
        environment.set("AWS_EC2_METADATA_SERVICE_ENDPOINT", "http://" + endpoint);
    }

    void expectQuestion(const std::string& document) {
        for (const Script& script : metadata::conversation(document))
            service.expect(script);
    }

    /// With its first credentials a provider asks for the region, for which it gets a token as if it were
    /// asking for credentials.
    void expectFirstQuestion(const std::string& document) {
        expectQuestion(document);
        expectQuestion(document);
        service.expect(metadata::text("eu-west-3a"));
    }

    void expectNothingElse() const {
        EXPECT_EQ(service.unusedScripts(), 0U);
        EXPECT_EQ(service.unexpectedRequests(), 0U);
    }

    ScriptedServer service;
};

TEST_F(InstanceProfile, HasTheCredentialsOfTheMachinesRole) {
    expectFirstQuestion(metadata::credentials("KEY"));
    InstanceProfileCredentialsProvider provider;
    EXPECT_EQ(toString(provider.GetAWSCredentials()), "KEY:SECRET:TOKEN");
    EXPECT_FALSE(provider.GetAWSCredentials().IsExpired());
    expectNothingElse();
}

TEST_F(InstanceProfile, IsAskedForAnewAfterTheRefreshPeriod) {
    expectFirstQuestion(metadata::credentials("FIRST"));
    expectQuestion(metadata::credentials("SECOND"));
    InstanceProfileCredentialsProvider provider(alwaysRefresh);
    EXPECT_EQ(toString(provider.GetAWSCredentials()), "FIRST:SECRET:TOKEN");
    EXPECT_EQ(toString(provider.GetAWSCredentials()), "SECOND:SECRET:TOKEN");
    expectNothingElse();
}

TEST_F(InstanceProfile, KeepsItsCredentialsWhileTheServiceHasNone) {
    expectFirstQuestion(metadata::credentials("KEY"));
    service.expect(metadata::status(400));
    expectQuestion("not a document");
    InstanceProfileCredentialsProvider provider(alwaysRefresh);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(toString(provider.GetAWSCredentials()), "KEY:SECRET:TOKEN");
    expectNothingElse();
}

TEST_F(InstanceProfile, IsAskedForByEveryRequestWhileThereAreNoCredentials) {
    service.expect(metadata::status(400));
    expectFirstQuestion(metadata::credentials("KEY"));
    InstanceProfileCredentialsProvider provider;
    EXPECT_EQ(toString(provider.GetAWSCredentials()), nobody);
    EXPECT_EQ(toString(provider.GetAWSCredentials()), "KEY:SECRET:TOKEN");
    expectNothingElse();
}

TEST_F(InstanceProfile, TakesNoExpiredCredentialsAndLeavesTheServiceAlone) {
    expectQuestion(metadata::credentials("OLD", "2001-01-01T00:00:00Z"));
    InstanceProfileCredentialsProvider provider(alwaysRefresh);
    EXPECT_EQ(toString(provider.GetAWSCredentials()), nobody);
    EXPECT_EQ(toString(provider.GetAWSCredentials()), nobody);
    expectNothingElse();
}

TEST_F(InstanceProfile, HasNoCredentialsWithoutService) {
    const testsupport::ClosedPort closed;
    useServiceAt("127.0.0.1:" + std::to_string(closed.number()));
    EXPECT_EQ(toString(InstanceProfileCredentialsProvider().GetAWSCredentials()), nobody);
}

TEST_F(InstanceProfile, HasNoCredentialsWhenTheServiceHangsUp) {
    ScriptedServer::Options always;
    always.repeatLast = true;
    const ScriptedServer rude({{Step::close()}}, always);
    useServiceAt(rude.endpoint());
    EXPECT_EQ(toString(InstanceProfileCredentialsProvider().GetAWSCredentials()), nobody);
}

TEST_F(InstanceProfile, StaysWithTheServiceItWasMadeFor) {
    expectFirstQuestion(metadata::credentials("KEY"));
    InstanceProfileCredentialsProvider provider;
    environment.unset("AWS_EC2_METADATA_SERVICE_ENDPOINT");
    EXPECT_EQ(toString(provider.GetAWSCredentials()), "KEY:SECRET:TOKEN");
}

TEST_F(InstanceProfile, IsOfTheServiceThatAllOfAProcessShare) {
    initializeSdk();
    environment.unset("AWS_EC2_METADATA_SERVICE_ENDPOINT");
    expectFirstQuestion(metadata::credentials("FIRST"));
    expectQuestion(metadata::credentials("SECOND"));  // the region is known by then
    EXPECT_EQ(toString(InstanceProfileCredentialsProvider().GetAWSCredentials()), "FIRST:SECRET:TOKEN");
    EXPECT_EQ(toString(InstanceProfileCredentialsProvider().GetAWSCredentials()), "SECOND:SECRET:TOKEN");
    expectNothingElse();
}

TEST_F(InstanceProfile, IsAskedForOnceByManyThreads) {
    const Step untilAllWait = Step::sleep(std::chrono::milliseconds(100));
    service.expect({untilAllWait, metadata::text("token").front()});
    service.expect(metadata::text("role"));
    service.expect(metadata::text(metadata::credentials("KEY")));
    expectQuestion(metadata::credentials("KEY"));
    service.expect(metadata::text("eu-west-3a"));
    InstanceProfileCredentialsProvider provider;
    std::atomic<int> right{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&] {
            if (toString(provider.GetAWSCredentials()) == "KEY:SECRET:TOKEN") ++right;
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(right, 8);
    expectNothingElse();
}

}  // namespace
