#include <gmock/gmock.h>

#include <stdexcept>
#include <thread>

#include "Client.hpp"
#include "s3server/Server.hpp"

namespace s3server::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

Options controllable() {
    Options options;
    options.checkSignatures = false;
    options.controlPort = 0;
    return options;
}

class Control : public testing::Test {
protected:
    Control() {
        server.createBucket("demo");
        server.putObject("demo", "k", "hello");
    }

    std::uint16_t controlPort() const {
        const std::string endpoint = server.controlEndpoint();
        return static_cast<std::uint16_t>(std::stoul(endpoint.substr(endpoint.rfind(':') + 1)));
    }

    Server server{controllable()};
    Client s3{server.endpoint()};
    Client control{server.controlEndpoint()};
};

TEST_F(Control, IsOffUnlessToldAndThenOfThisMachineAlone) {
    EXPECT_EQ(Server().controlEndpoint(), "");
    EXPECT_THAT(server.controlEndpoint(), StartsWith("127.0.0.1:"));
    EXPECT_NE(server.controlEndpoint(), server.endpoint());
}

TEST_F(Control, PlansFaultsWhileTheServerRuns) {
    EXPECT_EQ(s3.get("/demo/k").status, 200);
    const Answer planned = control.post("/faults", "503=SlowDown:GetObject");
    EXPECT_EQ(planned.status, 200);
    EXPECT_EQ(planned.body, "503=SlowDown:GetObject\n");
    EXPECT_EQ(s3.get("/demo/k").element("Code"), "SlowDown");
    EXPECT_EQ(control.get("/faults").body, "");
    EXPECT_EQ(s3.get("/demo/k").status, 200);
}

TEST_F(Control, AddsWhatIsPostedAndPutsOthersInItsPlace) {
    control.post("/faults", "503*2\r\n\r\n  cut=3@demo/k \n");
    EXPECT_EQ(control.post("/faults", "reset").body, "503*2\ncut=3@demo/k\nreset\n");
    EXPECT_EQ(control.put("/faults", "close\nstall").body, "close\nstall\n");
    EXPECT_EQ(control.get("/faults").body, "close\nstall\n");
    EXPECT_EQ(server.plannedFaultsLeft(), 2u);
}

TEST_F(Control, ForgetsWhatIsPlannedAndReleasesWhatIsHeld) {
    control.post("/faults", "stall\n503*9");
    RawConnection held(server.port());
    held.send("GET /demo/k HTTP/1.1\r\nHost: h\r\n\r\n");
    while (server.plannedFaultsLeft() != 9)
        std::this_thread::yield();
    EXPECT_EQ(control.remove("/faults").body, "");
    EXPECT_THAT(held.readThrough("hello"), StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_EQ(server.plannedFaultsLeft(), 0u);
}

TEST_F(Control, PlansNothingOfALotWithOneThatMakesNoSense) {
    control.post("/faults", "reset");
    for (const bool instead : {false, true}) {
        const Answer refused = instead ? control.put("/faults", "503\nexplode\nstall")
                                       : control.post("/faults", "503\nexplode\nstall");
        EXPECT_EQ(refused.status, 400);
        EXPECT_EQ(refused.body, "explode: 'explode' is no kind of fault\n");
    }
    EXPECT_EQ(control.get("/faults").body, "reset\n");
}

TEST_F(Control, CountsRequestsByOperationAndStatus) {
    s3.get("/demo/k");
    s3.get("/demo/k");
    s3.get("/demo/nothing");
    s3.send("PATCH", "/");
    EXPECT_EQ(control.get("/requests").body, "- 405 1\nGetObject 200 2\nGetObject 404 1\n");
    EXPECT_EQ(control.remove("/requests").body, "");
    EXPECT_EQ(server.requests().size(), 0u);
    s3.get("/demo/k");
    EXPECT_EQ(control.get("/requests").body, "GetObject 200 1\n");
}

TEST_F(Control, RequestsAreNoRequestsOfS3) {
    control.get("/faults");
    EXPECT_TRUE(server.requests().empty());
    EXPECT_TRUE(server.requestCounts().empty());
    EXPECT_EQ(control.get("/demo/k").status, 404);
    EXPECT_EQ(s3.get("/faults").element("Code"), "NoSuchBucket");
}

TEST_F(Control, RefusesWhatItDoesntKnow) {
    EXPECT_EQ(control.get("/").status, 404);
    EXPECT_EQ(control.get("/faults/").status, 404);
    EXPECT_EQ(control.post("/requests", "").status, 405);
    EXPECT_EQ(control.head("/faults").status, 405);
    EXPECT_EQ(control.send("PATCH", "/faults").header("allow"), "GET, POST, PUT, DELETE");
    RawConnection connection(controlPort());
    connection.send("nonsense\r\n\r\n");
    EXPECT_THAT(connection.readToEnd(), StartsWith("HTTP/1.1 400 Bad Request\r\n"));
}

TEST_F(Control, AsksForTheBodyAtOnce) {
    RawConnection connection(controlPort());
    connection.send("PUT /faults HTTP/1.1\r\nHost: h\r\nExpect: 100-continue\r\nContent-Length: 5\r\n\r\n");
    EXPECT_EQ(connection.readThrough("\r\n\r\n"), "HTTP/1.1 100 Continue\r\n\r\n");
    connection.send("reset");
    EXPECT_THAT(connection.readThrough("\r\n\r\nreset\n"), StartsWith("HTTP/1.1 200 OK\r\n"));
}

TEST_F(Control, TakesNoEndlessBody) {
    RawConnection connection(controlPort());
    connection.send("POST /faults HTTP/1.1\r\nHost: h\r\nContent-Length: 99999999999\r\n\r\nreset\n");
    EXPECT_THAT(connection.readToEnd(), StartsWith("HTTP/1.1 400 "));
    EXPECT_EQ(server.plannedFaultsLeft(), 0u);
}

TEST_F(Control, KeepsItsConnectionsAsTheClientWants) {
    RawConnection connection(controlPort());
    connection.send("GET /faults HTTP/1.0\r\nConnection: keep-alive\r\n\r\n");
    EXPECT_THAT(connection.readThrough("\r\n\r\n"), HasSubstr("\r\nConnection: keep-alive\r\n"));
    connection.send("GET /faults HTTP/1.1\r\nHost: h\r\n\r\n");
    EXPECT_THAT(connection.readThrough("\r\n\r\n"), StartsWith("HTTP/1.1 200 OK\r\n"));
    connection.send("GET /faults HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n");
    EXPECT_THAT(connection.readToEnd(), HasSubstr("\r\nConnection: close\r\n"));
}

TEST_F(Control, StopsWithTheServer) {
    const RawConnection idle(controlPort());
    EXPECT_EQ(control.get("/faults").status, 200);
    server.stop();
    EXPECT_NE(control.get("/faults").failure, "");
}

TEST_F(Control, SaysWhyItCantListen) {
    Options taken = controllable();
    taken.controlPort = controlPort();
    EXPECT_THROW(Server{taken}, std::runtime_error);
}

}  // namespace
}  // namespace s3server::test
