#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <fstream>
#include <functional>
#include <optional>
#include <s3server/Server.hpp>
#include <sstream>
#include <thread>

#include "support/process/Process.hpp"
#include "support/process/TemporaryFolder.hpp"
#include "support/servers/ServerEnvironment.hpp"

using s3server::Fault;
using ::testing::HasSubstr;
using ::testing::Not;

namespace {

constexpr const char* shutdown = "the SDK is shut down\n";
constexpr const char* clientGone = "a client is gone\n";

std::size_t countOf(const std::string& piece, const std::string& text) {
    std::size_t count = 0;
    for (auto at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1))
        ++count;
    return count;
}

void waitUntil(const std::function<bool()>& isSo) {
    while (!isSo())
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

class Interruption : public ::testing::Test {
protected:
    Interruption() {
        server.createBucket("demo");
        server.putObject("demo", "a/one", "1");
        server.putObject("demo", "b/two", "2");
    }

    testsupport::Variables environment() const {
        auto variables = testsupport::leadingTo(server);
        variables["HOME"] = folder.path().string();
        variables["LD_PRELOAD"] = COUNTED_SHUTDOWN;
        return variables;
    }

    /// Has the program list everything, and so many of its requests stall. Returns when the first one does.
    void startStalled(unsigned requests,
                      const std::vector<std::string>& command = {S3VFS_PROGRAM, "ls", "-r", "s3://demo"}) {
        server.plan(Fault::stall().times(requests));
        program.emplace(command, environment(), folder.path().string(), log);
        waitUntil([&] { return server.plannedFaultsLeft() < requests || !program->running(); });
    }

    std::string printed() const {
        std::ostringstream text;
        text << std::ifstream(log).rdbuf();
        return text.str();
    }

    void waitForText(const std::string& text) {
        waitUntil([&] { return countOf(text, printed()) > 0 || !program->running(); });
    }

    /// Says that the SDK was shut down once, and when its last client was gone.
    static void expectOrderlyEnd(const std::string& log) {
        EXPECT_EQ(countOf(shutdown, log), 1u) << log;
        ASSERT_GT(countOf(clientGone, log), 0u) << log;
        EXPECT_LT(log.rfind(clientGone), log.find(shutdown)) << log;
    }

    s3server::Server server;
    const testsupport::TemporaryFolder folder;
    const std::filesystem::path log = folder.path() / "log";
    std::optional<testsupport::BackgroundProcess> program;
};

class InterruptionBy : public Interruption, public ::testing::WithParamInterface<int> {};

TEST_P(InterruptionBy, EndsTheCommandWithTheRequestUnderWayAndShutsTheSdkDownOnce) {
    startStalled(1);
    program->signal(GetParam());
    waitForText("interrupted by SIG");
    server.releaseStalled();
    EXPECT_EQ(program->wait(), 128 + GetParam());
    expectOrderlyEnd(printed());
    EXPECT_THAT(printed(), Not(HasSubstr("two")));
}

TEST_P(InterruptionBy, EndsTheProgramAlthoughTheRequestUnderWayNeverEnds) {
    startStalled(1000);
    program->signal(GetParam());
    EXPECT_EQ(program->wait(), 128 + GetParam());
    EXPECT_EQ(countOf(shutdown, printed()), 1u) << printed();
    EXPECT_THAT(printed(), HasSubstr("the request under way takes too long"));
}

INSTANTIATE_TEST_SUITE_P(Signals, InterruptionBy, ::testing::Values(SIGINT, SIGTERM),
                         [](const auto& tested) { return tested.param == SIGINT ? "SIGINT" : "SIGTERM"; });

TEST_F(Interruption, EndsAReadingCommandWithItsFirstRequest) {
    startStalled(1, {S3VFS_PROGRAM, "cat", "s3://demo/a/one"});
    program->signal(SIGINT);
    waitForText("interrupted by SIG");
    server.releaseStalled();
    EXPECT_EQ(program->wait(), 128 + SIGINT);
    expectOrderlyEnd(printed());
    EXPECT_EQ(server.requests().size(), 1u);
}

TEST_F(Interruption, LeavesAWritingCommandItsRequest) {
    const std::string file = (folder.path() / "new").string();
    std::ofstream(file) << "new content";
    startStalled(1, {S3VFS_PROGRAM, "put", file, "s3://demo/new"});
    program->signal(SIGTERM);
    waitForText("interrupted by SIG");
    server.releaseStalled();
    EXPECT_EQ(program->wait(), 128 + SIGTERM);
    expectOrderlyEnd(printed());
}

TEST_F(Interruption, WaitsForNothingWhenItIsRepeated) {
    startStalled(1000);
    program->signal(SIGINT);
    program->signal(SIGTERM);
    EXPECT_EQ(program->wait(), 128 + SIGINT);
    EXPECT_EQ(countOf(shutdown, printed()), 1u) << printed();
    EXPECT_THAT(printed(), HasSubstr("interrupted by SIGINT\ns3vfs: interrupted again"));
}

TEST_F(Interruption, ByASignalThatIsIgnoredSinceTheStartIsNone) {
    startStalled(1, {"/bin/sh", "-c", "trap '' INT; exec " S3VFS_PROGRAM " ls -r s3://demo"});
    program->signal(SIGINT);
    server.releaseStalled();
    EXPECT_EQ(program->wait(), 0);
    EXPECT_THAT(printed(), HasSubstr("two"));
}

TEST_F(Interruption, IsNotNeededForShuttingTheSdkDownOnce) {
    for (const char* const address : {"s3://demo", "s3://demo/no/such/folder"}) {
        const auto finished = testsupport::run({S3VFS_PROGRAM, "ls", address}, environment(), folder.path());
        EXPECT_EQ(finished.status, address == std::string("s3://demo") ? 0 : 1);
        expectOrderlyEnd(finished.err);
    }
}

}  // namespace
