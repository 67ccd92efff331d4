#include <gmock/gmock.h>

#include <future>

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
    while (answer.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready)
        server.releaseStalled();
    EXPECT_EQ(answer.get().body, "0123456789");
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
