#include <gmock/gmock.h>

#include <array>
#include <atomic>
#include <future>
#include <thread>

#include "Client.hpp"
#include "s3server/Server.hpp"

namespace s3server::test {
namespace {

using testing::Eq;
using testing::Optional;

class Faults : public testing::Test {
protected:
    Faults() {
        server.createBucket("demo");
        server.putObject("demo", "k", "0123456789");
    }

    static Options openToAll() {
        Options options;
        options.checkSignatures = false;
        return options;
    }

    Server server{openToAll()};
    Client client{server.endpoint()};
};

TEST_F(Faults, AnswerAStatusInsteadOfTheOperationAsOftenAsPlanned) {
    server.plan(Fault::status(503, "SlowDown").on("PutObject").times(2));
    for (int i = 0; i < 2; ++i) {
        const Answer answer = client.put("/demo/new", "x");
        EXPECT_EQ(answer.status, 503);
        EXPECT_EQ(answer.element("Code"), "SlowDown");
        EXPECT_NE(answer.element("RequestId"), "");
    }
    EXPECT_EQ(server.object("demo", "new"), std::nullopt);
    EXPECT_EQ(server.plannedFaultsLeft(), 0u);
    EXPECT_EQ(client.put("/demo/new", "x").status, 200);
    EXPECT_EQ(server.connections(), 1u);
}

TEST_F(Faults, AnswerTheUsualCodeOfAStatus) {
    server.plan(Fault::status(500));
    EXPECT_EQ(client.get("/demo/k").element("Code"), "InternalError");
    server.plan(Fault::status(404));
    EXPECT_EQ(client.get("/demo/k").element("Code"), "NoSuchKey");
}

TEST_F(Faults, KeepTheStatusGivenWhateverTheCode) {
    server.plan(Fault::status(509, "SlowDown"));
    const Answer answer = client.get("/demo/k");
    EXPECT_EQ(answer.status, 509);
    EXPECT_EQ(answer.element("Code"), "SlowDown");
}

TEST_F(Faults, AnswerAnErrorAsASuccess) {
    server.plan(Fault::errorIn200("InternalError"));
    const Answer answer = client.get("/demo/k");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.element("Code"), "InternalError");
}

TEST_F(Faults, AnswerAnything) {
    server.plan(Fault::reply(299, {{"X-Odd", "yes"}, {"Content-Length", "2"}}, "ab"));
    const Answer answer = client.get("/demo/k");
    EXPECT_EQ(answer.status, 299);
    EXPECT_EQ(answer.header("x-odd"), "yes");
    EXPECT_EQ(answer.body, "ab");
}

TEST_F(Faults, CutTheBodyThatTheHeadAnnounces) {
    server.plan(Fault::cutAfter(4));
    const Answer answer = client.get("/demo/k");
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.header("content-length"), "10");
    EXPECT_EQ(answer.body, "0123");
    EXPECT_NE(answer.failure, "");
    EXPECT_EQ(server.requests().back().responseBytes, 4u);
}

TEST_F(Faults, CutALongBodyInTheMiddleOfASegment) {
    const std::string bytes(std::size_t{5} << 20U, 'x');
    client.put("/demo/long", bytes);
    server.plan(Fault::cutAfter(3000000));
    EXPECT_EQ(client.get("/demo/long").body, bytes.substr(0, 3000000));
}

TEST_F(Faults, ResetTheConnectionBeforeTheAnswer) {
    server.plan(Fault::reset());
    RawConnection connection(server.port());
    connection.send("PUT /demo/new HTTP/1.1\r\nHost: h\r\nContent-Length: 1\r\n\r\nx");
    EXPECT_EQ(connection.readToEnd(), "");
    EXPECT_TRUE(connection.wasReset());
    EXPECT_EQ(server.object("demo", "new"), std::nullopt);
    EXPECT_EQ(server.requests().back().status, 0);
}

TEST_F(Faults, ResetTheConnectionAfterTheHead) {
    server.plan(Fault::resetAfterHeaders());
    RawConnection connection(server.port());
    connection.send("GET /demo/k HTTP/1.1\r\nHost: h\r\n\r\n");
    EXPECT_THAT(connection.readToEnd(), testing::EndsWith("Content-Length: 10\r\n\r\n"));
    EXPECT_TRUE(connection.wasReset());
}

TEST_F(Faults, LoseTheReplyOfAnOperationThatWasPerformed) {
    server.plan(Fault::closeWithoutReply());
    RawConnection connection(server.port());
    connection.send("PUT /demo/new HTTP/1.1\r\nHost: h\r\nContent-Length: 1\r\n\r\nx");
    EXPECT_EQ(connection.readToEnd(), "");
    EXPECT_FALSE(connection.wasReset());
    EXPECT_THAT(server.object("demo", "new"), Optional(Eq("x")));
}

TEST_F(Faults, DelayAnAnswer) {
    server.plan(Fault::delay(std::chrono::milliseconds(30)));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(client.get("/demo/k").body, "0123456789");
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(30));
}

TEST_F(Faults, HoldAnAnswerUntilItIsReleased) {
    server.plan(Fault::stall());
    auto answer = std::async(std::launch::async, [this] { return Client(server.endpoint()).get("/demo/k"); });
    while (server.plannedFaultsLeft() != 0)
        std::this_thread::yield();
    EXPECT_EQ(client.get("/demo/k").status, 200) << "others aren't held";
    server.releaseStalled();
    EXPECT_EQ(answer.get().body, "0123456789");
}

TEST_F(Faults, EndWhenTheyAreReset) {
    server.plan({Fault::stall(), Fault::status(503).times(7)});
    auto held = std::async(std::launch::async, [this] { return Client(server.endpoint()).get("/demo/k"); });
    while (server.plannedFaultsLeft() != 7)
        std::this_thread::yield();
    ASSERT_EQ(server.plannedFaults().size(), 1u);
    EXPECT_EQ(server.plannedFaults().front().text(), "503*7");
    server.resetFaults();
    EXPECT_EQ(held.get().body, "0123456789");
    EXPECT_EQ(server.plannedFaults().size(), 0u);
    EXPECT_EQ(client.get("/demo/k").status, 200);
    server.plan(Fault::status(503));
    EXPECT_EQ(client.get("/demo/k").status, 503) << "new ones may be planned";
}

/// Threads that ask for an object until they are told to stop.
class Readers {
public:
    explicit Readers(const Server& server) {
        for (auto& reader : threads_)
            reader = std::thread([this, endpoint = server.endpoint()] {
                Client client(endpoint);
                while (!stopping_)
                    ++statuses_[client.get("/demo/k").status == 503 ? 1 : 0];
            });
    }
    ~Readers() { stop(); }
    Readers(const Readers&) = delete;
    Readers& operator=(const Readers&) = delete;

    void stop() {
        stopping_ = true;
        for (auto& reader : threads_)
            if (reader.joinable()) reader.join();
    }
    std::uint64_t failures() const { return statuses_[1]; }
    std::uint64_t all() const { return statuses_[0] + statuses_[1]; }

private:
    std::array<std::thread, 3> threads_;
    std::array<std::atomic<std::uint64_t>, 2> statuses_{};
    std::atomic<bool> stopping_{false};
};

TEST_F(Faults, PlannedWhileRequestsRunBefallExactlyAsManyAsPlanned) {
    constexpr unsigned rounds = 20;
    Readers readers(server);
    const auto planRounds = [this] {
        for (unsigned i = 0; i < rounds; ++i)
            server.plan({Fault::status(503).times(1), Fault::status(503).skip(1).times(2)});
    };
    std::thread other(planRounds);
    planRounds();
    other.join();
    while (server.plannedFaultsLeft() != 0)
        std::this_thread::yield();
    readers.stop();
    EXPECT_EQ(readers.failures(), 2 * rounds * 3);
    const RequestCounts counts = server.requestCounts();
    EXPECT_EQ(counts.at({"GetObject", 503}), readers.failures());
    EXPECT_EQ(counts.at({"GetObject", 200}), readers.all() - readers.failures());
}

TEST_F(Faults, MayBeResetAndListedWhileRequestsRun) {
    Readers readers(server);
    for (int i = 0; i < 100 || readers.all() < 100; ++i) {
        server.plan({Fault::status(503).times(1000), Fault::stall()});
        for (const Fault& fault : server.plannedFaults())
            EXPECT_FALSE(fault.text().empty());
        server.resetFaults();
    }
    EXPECT_EQ(server.plannedFaultsLeft(), 0u);
    readers.stop();
    std::uint64_t counted = 0;
    for (const auto& [request, count] : server.requestCounts())
        counted += count;
    EXPECT_EQ(counted, readers.all());
    EXPECT_EQ(client.get("/demo/k").status, 200);
}

TEST_F(Faults, DontKeepTheServerFromStopping) {
    server.plan(Fault::stall().on("PutObject"));
    server.plan(Fault::delay(std::chrono::hours(1)));
    auto first =
        std::async(std::launch::async, [this] { return Client(server.endpoint()).put("/demo/new", "x"); });
    auto second = std::async(std::launch::async, [this] { return Client(server.endpoint()).get("/demo/k"); });
    while (server.plannedFaultsLeft() != 0)
        std::this_thread::yield();
    server.stop();
    EXPECT_NE(first.get().failure, "");
    EXPECT_NE(second.get().failure, "");
    EXPECT_EQ(server.object("demo", "new"), std::nullopt) << "what was held isn't performed";
}

}  // namespace
}  // namespace s3server::test
