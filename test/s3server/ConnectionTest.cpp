#include <gmock/gmock.h>

#include "Client.hpp"
#include "s3server/Server.hpp"

namespace s3server::test {
namespace {

using testing::Eq;
using testing::HasSubstr;
using testing::Optional;
using testing::StartsWith;

class Connections : public testing::Test {
protected:
    Connections() {
        server.createBucket("demo");
        server.putObject("demo", "k", "hello");
    }

    static Options openToAll() {
        Options options;
        options.checkSignatures = false;
        return options;
    }
    std::string exchange(const std::string& request) {
        RawConnection connection(server.port());
        connection.send(request);
        return connection.readToEnd();
    }

    Server server{openToAll()};
};

TEST_F(Connections, StayOpenForTheNextRequest) {
    RawConnection connection(server.port());
    for (int i = 0; i < 3; ++i) {
        connection.send("GET /demo/k HTTP/1.1\r\nHost: h\r\n\r\n");
        EXPECT_THAT(connection.readThrough("hello"), StartsWith("HTTP/1.1 200 OK\r\n"));
    }
    EXPECT_EQ(server.connections(), 1u);
}

TEST_F(Connections, TakeRequestsThatCameTogether) {
    const std::string answers = exchange(
        "PUT /demo/a HTTP/1.1\r\nHost: h\r\nContent-Length: 3\r\n\r\none"
        "GET /demo/a HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n");
    EXPECT_THAT(answers, testing::EndsWith("\r\n\r\none"));
    EXPECT_EQ(server.requests().size(), 2u);
}

TEST_F(Connections, EndWhenTheClientWantsItOrSpeaksTheOldProtocol) {
    EXPECT_THAT(exchange("GET /demo/k HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n"),
                HasSubstr("\r\nConnection: close\r\n"));
    EXPECT_THAT(exchange("GET /demo/k HTTP/1.0\r\nHost: h\r\n\r\n"), testing::EndsWith("\r\n\r\nhello"));
}

TEST_F(Connections, StayOpenForAClientOfTheOldProtocolThatAsksForIt) {
    RawConnection connection(server.port());
    for (int i = 0; i < 2; ++i) {
        connection.send("GET /demo/k HTTP/1.0\r\nConnection: keep-alive\r\n\r\n");
        EXPECT_THAT(connection.readThrough("hello"), HasSubstr("\r\nConnection: keep-alive\r\n"));
    }
    connection.send("GET /demo/k HTTP/1.0\r\n\r\n");
    EXPECT_THAT(connection.readToEnd(), HasSubstr("\r\nConnection: close\r\n"));
    EXPECT_EQ(server.connections(), 1u);
}

TEST_F(Connections, SayNothingOfStayingOpenToAClientOfTodaysProtocol) {
    RawConnection connection(server.port());
    connection.send("GET /demo/k HTTP/1.1\r\nHost: h\r\nConnection: keep-alive\r\n\r\n");
    EXPECT_THAT(connection.readThrough("hello"), testing::Not(HasSubstr("\r\nConnection:")));
}

TEST_F(Connections, SendAClientOfTheOldProtocolNoInterimResponse) {
    EXPECT_THAT(exchange("PUT /demo/a HTTP/1.0\r\nExpect: 100-continue\r\nContent-Length: 3\r\n\r\nabc"),
                StartsWith("HTTP/1.1 200 OK\r\n"));
}

TEST_F(Connections, AskForTheBodyAtOnce) {
    RawConnection connection(server.port());
    connection.send("PUT /demo/a HTTP/1.1\r\nHost: h\r\nExpect: 100-continue\r\nContent-Length: 3\r\n\r\n");
    EXPECT_EQ(connection.readThrough("\r\n\r\n"), "HTTP/1.1 100 Continue\r\n\r\n");
    connection.send("abc");
    EXPECT_THAT(connection.readThrough("\r\n\r\n"), StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_THAT(server.object("demo", "a"), Optional(Eq("abc")));
}

TEST_F(Connections, TakeBodiesInChunks) {
    const std::string answer = exchange(
        "PUT /demo/a HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\nConnection: close\r\n\r\n"
        "3\r\nabc\r\n4;x=y\r\ndefg\r\n0\r\n\r\n");
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 200 OK\r\n"));
    EXPECT_THAT(server.object("demo", "a"), Optional(Eq("abcdefg")));
}

TEST_F(Connections, StoreNothingFromABodyThatBreaksOff) {
    {
        const RawConnection connection(server.port());
        connection.send("PUT /demo/k HTTP/1.1\r\nHost: h\r\nContent-Length: 10\r\n\r\nabc");
    }
    server.stop();
    EXPECT_THAT(server.object("demo", "k"), Optional(Eq("hello")));
    EXPECT_TRUE(server.requests().empty());
}

TEST_F(Connections, WantAnObjectsLength) {
    EXPECT_THAT(exchange("PUT /demo/a HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n"),
                testing::AllOf(StartsWith("HTTP/1.1 411 "), HasSubstr("<Code>MissingContentLength</Code>")));
}

TEST_F(Connections, EndAfterAnObjectThatIsFarTooLarge) {
    RawConnection connection(server.port());
    connection.send("PUT /demo/a HTTP/1.1\r\nHost: h\r\nContent-Length: 99999999999\r\n\r\n");
    const std::string piece(std::size_t{1} << 20U, 'x');
    for (int i = 0; i < 64; ++i)
        connection.send(piece);
    const std::string answer = connection.readThrough("</Error>");
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 400 "));
    EXPECT_THAT(answer, HasSubstr("<Code>EntityTooLarge</Code>"));
    EXPECT_THAT(answer, HasSubstr("\r\nConnection: close\r\n"));
}

TEST_F(Connections, RefuseWhatIsNoHttp) {
    for (const char* const request : {"\x16\x03\x01 hello\r\n\r\n", "GET /demo/k\r\n\r\n",
                                      "GET /demo/k HTTP/1.1\r\nbroken header\r\n\r\n",
                                      "PUT /demo/a HTTP/1.1\r\nHost: h\r\nContent-Length: -1\r\n\r\n"}) {
        const std::string answer = exchange(request);
        EXPECT_THAT(answer, StartsWith("HTTP/1.1 400 Bad Request\r\n")) << request;
        EXPECT_THAT(answer, HasSubstr("<Code>BadRequest</Code>")) << request;
    }
}

TEST_F(Connections, TakeTheTargetsThatProxiesGet) {
    const std::string answer =
        exchange("GET http://demo.localhost:80/k HTTP/1.1\r\nHost: other\r\nConnection: close\r\n\r\n");
    EXPECT_THAT(answer, testing::EndsWith("\r\n\r\nhello"));
}

TEST_F(Connections, GiveNoLengthWhereThereIsNoBody) {
    const std::string answer = exchange("DELETE /demo/k HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n");
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 204 No Content\r\n"));
    EXPECT_THAT(answer, testing::Not(HasSubstr("Content-Length")));
}

}  // namespace
}  // namespace s3server::test
