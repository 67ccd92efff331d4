#include "support/servers/Relay.hpp"

#include <gtest/gtest.h>

#include <boost/asio/buffer.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <string>

namespace testsupport {
namespace {

namespace asio = boost::asio;
using boost::system::error_code;
using tcp = asio::ip::tcp;

/// A client and a server, both played by the test.
class RelayTest : public testing::Test {
protected:
    void connect() {
        const std::string endpoint = relay.endpoint();
        const auto port = static_cast<std::uint16_t>(std::stoul(endpoint.substr(endpoint.find(':') + 1)));
        client.connect({asio::ip::address_v4::loopback(), port});
        acceptor.accept(server);
    }

    /// Everything up to the end of the connection, which `end` then tells.
    std::string readToEnd(tcp::socket& socket) {
        std::string text;
        asio::read(socket, asio::dynamic_buffer(text), end);
        return text;
    }

    static void send(tcp::socket& socket, const std::string& text) {
        asio::write(socket, asio::buffer(text));
    }

    asio::io_context context;
    tcp::acceptor acceptor{context, {asio::ip::address_v4::loopback(), 0}};
    Relay relay{acceptor.local_endpoint().port()};
    tcp::socket client{context};
    tcp::socket server{context};
    error_code end;
};

TEST_F(RelayTest, CarriesBothWaysAndEndsWithItsEnds) {
    connect();
    send(client, "question");
    client.shutdown(tcp::socket::shutdown_send);
    EXPECT_EQ(readToEnd(server), "question");
    send(server, "answer");
    server.close();
    EXPECT_EQ(readToEnd(client), "answer");
    EXPECT_EQ(end, asio::error::eof);
}

TEST_F(RelayTest, ClosesBothSidesBehindAByteFromTheClient) {
    relay.breakNext({Relay::Break::Close, 4});
    connect();
    send(client, "question");
    EXPECT_EQ(readToEnd(server), "ques");
    EXPECT_EQ(readToEnd(client), "");
}

TEST_F(RelayTest, ResetsTheClientBehindAByteFromTheServer) {
    relay.breakNext({Relay::Break::Reset, Relay::everything, 3});
    connect();
    send(server, "answer");
    readToEnd(client);
    EXPECT_EQ(end, asio::error::connection_reset);
}

TEST_F(RelayTest, KeepsAStalledConnectionOpenInTheOtherDirection) {
    relay.breakNext({Relay::Break::Stall, 4});
    connect();
    send(client, "question");
    send(server, "answer");
    server.shutdown(tcp::socket::shutdown_send);
    EXPECT_EQ(readToEnd(client), "answer");
    std::string arrived(4, '\0');
    asio::read(server, asio::buffer(arrived));
    EXPECT_EQ(arrived, "ques");
    EXPECT_EQ(server.available(), 0U);
}

TEST_F(RelayTest, BreaksOneConnectionOnly) {
    relay.breakNext({Relay::Break::Close, 0});
    connect();
    EXPECT_EQ(readToEnd(server), "");
    client.close();
    server.close();
    connect();
    send(client, "question");
    client.shutdown(tcp::socket::shutdown_send);
    EXPECT_EQ(readToEnd(server), "question");
    EXPECT_EQ(relay.connections(), 2U);
}

}  // namespace
}  // namespace testsupport
