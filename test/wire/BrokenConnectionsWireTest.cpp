#include <gmock/gmock.h>

#include <sstream>

#include "support/plugin/CloudFailure.hpp"
#include "support/servers/ScriptedServer.hpp"
#include "wire/WireTable.hpp"

using namespace testsupport;
using namespace std::chrono_literals;
using storage::cloudprovider::UnknownErrorException;
using storage::s3provider::S3CloudClient;
using ::testing::ElementsAre;

namespace {

const std::string content = "the whole content, which is longer than what a broken answer brings of it";

// Longer than any test may take: what a client must not wait for.
constexpr auto forEver = 600s;

// More than the buffers of a connection hold.
constexpr std::size_t moreThanBuffered = std::size_t{16} * 1024 * 1024;

std::string headOf(const std::string& body) {
    return httpReply(200, {{"Content-Length", std::to_string(body.size())}});
}

/// A client of a server whose answers break.
class BrokenConnections : public ::testing::Test {
protected:
    BrokenConnections() : configuration(plainConfiguration(server.endpoint())) {
        configuration.requestTimeoutMs = 2000;
        configuration.lowSpeedLimit =
            1'000'000'000;  // so that what came before a silence doesn't count for long
    }

    S3CloudClient client(int attempts) const {
        return {"b", sdkClient(configuration), {attempts, 0}, "eu-west-3"};
    }

    // By method and connection: "GET 1".
    std::vector<std::string> requests() const {
        std::vector<std::string> texts;
        for (const SeenRequest& request : server.requests())
            texts.push_back(request.method + " " + std::to_string(request.connection));
        return texts;
    }

    ScriptedServer server;
    Aws::Client::ClientConfiguration configuration;
};

struct Breakage {
    const char* name;
    Script script;
};

void PrintTo(const Breakage& breakage, std::ostream* out) {
    *out << breakage.name;
}

std::string nameOf(const ::testing::TestParamInfo<Breakage>& test) {
    return test.param.name;
}

class BrokenDownload : public BrokenConnections, public ::testing::WithParamInterface<Breakage> {};

class BrokenUpload : public BrokenConnections, public ::testing::WithParamInterface<Breakage> {};

}  // namespace

TEST_P(BrokenDownload, GivesNothing) {
    server.expect(GetParam().script);
    server.expect({Step::send(locationReply("eu-west-3"))});
    std::ostringstream out;
    expectFailure<UnknownErrorException>(noIdentifier, [&] { client(1).download("k", out, 0, 0); });
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(requests(), ElementsAre("GET 1", "GET 2"));
}

TEST_P(BrokenDownload, IsWholeInTheNextAttemptOnAnotherConnection) {
    server.expect(GetParam().script);
    server.expect({Step::send(httpReply(200, {}, content))});
    std::ostringstream out;
    client(2).download("k", out, 0, 0);
    EXPECT_EQ(out.str(), content);
    EXPECT_THAT(requests(), ElementsAre("GET 1", "GET 2"));
}

INSTANTIATE_TEST_SUITE_P(
    Wire, BrokenDownload,
    ::testing::Values(
        Breakage{"ClosedBeforeTheHead", {Step::close()}}, Breakage{"ResetBeforeTheHead", {Step::reset()}},
        Breakage{"ClosedInTheStatusLine", {Step::send("HTTP/1.1 200"), Step::close()}},
        Breakage{"ResetInTheHead", {Step::send("HTTP/1.1 200 OK\r\nContent-Le"), Step::reset()}},
        Breakage{"ResetAfterTheHead", {Step::send(headOf(content)), Step::reset()}},
        Breakage{"ClosedAfterTheHead", {Step::send(headOf(content)), Step::close()}},
        Breakage{"ClosedInTheBody", {Step::send(headOf(content) + content.substr(0, 20)), Step::close()}},
        Breakage{"ClosedBeforeTheLastByte", {Step::send(headOf(content) + content.substr(1)), Step::close()}},
        Breakage{"ResetInTheBody", {Step::send(headOf(content) + content.substr(0, 20)), Step::reset()}},
        Breakage{"ClosedBetweenChunks",
                 {Step::send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n7\r\nthe who\r\n"),
                  Step::close()}},
        Breakage{"StalledBeforeTheHead", {Step::sleep(forEver)}},
        Breakage{"StalledInTheHead", {Step::send("HTTP/1.1 200 OK\r\n"), Step::sleep(forEver)}},
        Breakage{"StalledInTheBody",
                 {Step::send(headOf(content) + content.substr(0, 20)), Step::sleep(forEver)}}),
    nameOf);

TEST_P(BrokenUpload, IsOneFailureAndNotRepeated) {
    server.expect(GetParam().script);
    server.expect({Step::send(locationReply("eu-west-3"))});
    std::istringstream in(std::string(moreThanBuffered, 'x'));
    expectFailure<UnknownErrorException>(noIdentifier, [&] { client(5).upload("k", in, moreThanBuffered); });
    EXPECT_THAT(requests(), ElementsAre("PUT 1", "GET 2"));
}

const Step goOn = Step::send("HTTP/1.1 100 Continue\r\n\r\n");

INSTANTIATE_TEST_SUITE_P(
    Wire, BrokenUpload,
    ::testing::Values(Breakage{"ClosedAfterTheBody", {Step::close()}},
                      Breakage{"ResetAfterTheBody", {Step::reset()}},
                      Breakage{"StalledAfterTheBody", {Step::sleep(forEver)}},
                      Breakage{"ClosedBeforeTheBody", {Step::noReadBody(), Step::close()}},
                      Breakage{"ResetInTheBody", {Step::noReadBody(), goOn, Step::reset()}},
                      Breakage{"StalledInTheBody", {Step::noReadBody(), goOn, Step::sleep(forEver)}}),
    nameOf);

TEST_F(BrokenConnections, AnAnswerBelowTheLowestSpeedIsGivenUp) {
    configuration.lowSpeedLimit = 100000;
    server.expect({Step::send(headOf(std::string(60000, 'x'))), Step::drip(std::string(60000, 'x'), 10ms)});
    server.expect({Step::send(locationReply("eu-west-3"))});
    std::ostringstream out;
    expectFailure<UnknownErrorException>(noIdentifier, [&] { client(1).download("k", out, 0, 0); });
    EXPECT_EQ(out.str(), "");
}

TEST_F(BrokenConnections, ASlowAnswerAboveTheLowestSpeedComesWhole) {
    configuration.requestTimeoutMs = 60000;
    configuration.lowSpeedLimit = 1;
    server.expect({Step::drip(httpReply(200, {}, content), 5ms)});
    std::ostringstream out;
    client(1).download("k", out, 0, 0);
    EXPECT_EQ(out.str(), content);
}

TEST_F(BrokenConnections, ABodyWithoutLengthEndsWithItsConnection) {
    server.expect({Step::send("HTTP/1.1 200 OK\r\n\r\n" + content), Step::close()});
    server.expect({Step::send(httpReply(200, {}, content))});
    auto once = client(1);
    for (int i = 0; i < 2; ++i) {
        std::ostringstream out;
        once.download("k", out, 0, 0);
        EXPECT_EQ(out.str(), content);
    }
    EXPECT_THAT(requests(), ElementsAre("GET 1", "GET 2"));
}

TEST_F(BrokenConnections, DontMakeAnObjectMissing) {
    server.expect({Step::close()});
    server.expect({Step::send(locationReply("eu-west-3"))});
    expectFailure<UnknownErrorException>(noIdentifier, [&] { client(1).stat("k"); });
    EXPECT_THAT(requests(), ElementsAre("HEAD 1", "GET 2"));
}

TEST_F(BrokenConnections, DontEndAListing) {
    server.expect({Step::send(headOf(content) + "<ListBucketResult/>"), Step::close()});
    server.expect({Step::send(locationReply("eu-west-3"))});
    std::string token = "next";
    expectFailure<UnknownErrorException>(noIdentifier, [&] { client(1).list("", token, {"", 0}); });
    EXPECT_EQ(token, "next");
}
