#include "s3server/Server.hpp"

#include <gmock/gmock.h>

#include <future>
#include <stdexcept>
#include <thread>

#include "Client.hpp"

namespace s3server::test {
namespace {

using testing::ElementsAre;
using testing::Eq;
using testing::IsEmpty;
using testing::Optional;
using testing::Pair;

Options openToAll() {
    Options options;
    options.checkSignatures = false;
    return options;
}

TEST(Server, NamesItsEndpoint) {
    const Server server;
    EXPECT_NE(server.port(), 0);
    EXPECT_EQ(server.endpoint(), "127.0.0.1:" + std::to_string(server.port()));
}

TEST(Server, SaysWhyItCantListen) {
    const Server first;
    Options taken;
    taken.port = first.port();
    EXPECT_THROW(Server{taken}, std::runtime_error);
    Options nonsense;
    nonsense.address = "nowhere";
    EXPECT_THROW(Server{nonsense}, std::runtime_error);
}

TEST(Server, StoresWithoutARequest) {
    Server server;
    server.createBucket("demo", "eu-west-3");
    server.putObject("demo", "b", "2");
    server.putObject("demo", "a", "1");
    EXPECT_THAT(server.object("demo", "a"), Optional(Eq("1")));
    EXPECT_THAT(server.keys("demo"), ElementsAre("a", "b"));
    EXPECT_EQ(server.object("demo", "c"), std::nullopt);
    EXPECT_TRUE(server.keys("nothing").empty());
    EXPECT_EQ(server.openUploads("nothing"), 0u);
    EXPECT_THROW(server.createBucket("demo"), std::invalid_argument);
    EXPECT_THROW(server.createBucket(""), std::invalid_argument);
    EXPECT_THROW(server.putObject("nothing", "a", ""), std::invalid_argument);
}

TEST(Server, RecordsEveryRequest) {
    Server server(openToAll());
    server.createBucket("demo");
    server.putObject("demo", "a b", "12345");
    Client client(server.endpoint());
    client.get("/demo/a%20b", {{"X-Note", "hello"}});
    client.put("/demo/c", "123");
    client.send("PATCH", "/demo/c");

    const auto requests = server.requests();
    ASSERT_EQ(requests.size(), 3u);
    EXPECT_EQ(requests[0].operation, "GetObject");
    EXPECT_EQ(requests[0].method, "GET");
    EXPECT_EQ(requests[0].target, "/demo/a%20b");
    EXPECT_EQ(requests[0].bucket, "demo");
    EXPECT_EQ(requests[0].key, "a b");
    EXPECT_THAT(requests[0].header("x-note"), Optional(Eq("hello")));
    EXPECT_EQ(requests[0].header("x-other"), std::nullopt);
    EXPECT_EQ(requests[0].responseBytes, 5u);
    EXPECT_EQ(requests[0].status, 200);
    EXPECT_EQ(requests[1].bodyBytes, 3u);
    EXPECT_EQ(requests[1].responseBytes, 0u);
    EXPECT_EQ(requests[2].operation, "");
    EXPECT_EQ(requests[2].status, 405);
    server.forgetRequests();
    EXPECT_TRUE(server.requests().empty());
}

TEST(Server, RemembersTheLatestRequestsAndCountsThemAll) {
    Options options = openToAll();
    options.rememberedRequests = 2;
    Server server(options);
    server.createBucket("demo");
    Client client(server.endpoint());
    for (const char* const target : {"/demo/1", "/demo/2", "/", "/demo/3"})
        client.get(target);
    client.send("PATCH", "/demo");

    const auto requests = server.requests();
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0].target, "/demo/3");
    EXPECT_EQ(requests[1].method, "PATCH");
    EXPECT_THAT(server.requestCounts(), ElementsAre(Pair(Pair("", 405), 1u), Pair(Pair("GetObject", 404), 3u),
                                                    Pair(Pair("ListBuckets", 200), 1u)));
    server.forgetRequests();
    EXPECT_THAT(server.requestCounts(), IsEmpty());
}

TEST(Server, RemembersNoRequestIfItShouldnt) {
    Options options = openToAll();
    options.rememberedRequests = 0;
    Server server(options);
    Client(server.endpoint()).get("/");
    EXPECT_THAT(server.requests(), IsEmpty());
    EXPECT_THAT(server.requestCounts(), ElementsAre(Pair(Pair("ListBuckets", 200), 1u)));
}

TEST(Server, CountsConnectionsAndTellsThemApart) {
    Server server(openToAll());
    Client first(server.endpoint());
    Client second(server.endpoint());
    first.get("/");
    second.get("/");
    first.get("/");
    const auto requests = server.requests();
    ASSERT_EQ(requests.size(), 3u);
    EXPECT_EQ(server.connections(), 2u);
    EXPECT_EQ(requests[0].connection, 1u);
    EXPECT_EQ(requests[1].connection, 2u);
    EXPECT_EQ(requests[2].connection, 1u);
}

TEST(Server, TellsOfEachRequestOneAtATime) {
    std::vector<std::string> seen;
    Options options = openToAll();
    options.onRequest = [&seen](const RequestRecord& request) { seen.push_back(request.operation); };
    Server server(options);
    Client(server.endpoint()).get("/");
    server.stop();
    EXPECT_THAT(seen, ElementsAre("ListBuckets"));
}

TEST(Server, StopsWithIdleConnectionsOpenAndKeepsWhatItHas) {
    Server server(openToAll());
    server.createBucket("demo");
    Client client(server.endpoint());
    const RawConnection idle(server.port());
    client.put("/demo/k", "x");
    server.stop();
    EXPECT_NE(client.get("/").failure, "");
    EXPECT_THAT(server.object("demo", "k"), Optional(Eq("x")));
    EXPECT_EQ(server.requests().size(), 1u);
    server.stop();
}

TEST(Server, ReadsAnObjectToItsEndWhileItIsReplaced) {
    Server server(openToAll());
    server.createBucket("demo");
    const std::string old(std::size_t{32} << 20U, 'o');
    server.putObject("demo", "k", old);
    RawConnection reader(server.port());
    reader.send("GET /demo/k HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n");
    reader.readThrough("\r\n\r\n");
    server.putObject("demo", "k", "new");
    EXPECT_EQ(reader.readToEnd(), old);
}

TEST(Server, ServesManyAtOnce) {
    constexpr int each = 50;
    Server server(openToAll());
    server.createBucket("demo");
    const auto work = [&server](const std::string& name) {
        Client client(server.endpoint());
        int good = 0;
        for (int i = 0; i < each; ++i) {
            const std::string target = "/demo/" + name + std::to_string(i);
            const bool stored = client.put(target, target).status == 200;
            const bool listed = client.get("/demo?list-type=2&max-keys=10").status == 200;
            if (stored && listed && client.get(target).body == target) ++good;
        }
        return good;
    };
    std::vector<std::future<int>> threads;
    for (const char* const name : {"a", "b", "c", "d"})
        threads.push_back(std::async(std::launch::async, work, name));
    for (auto& thread : threads)
        EXPECT_EQ(thread.get(), each);
    EXPECT_EQ(server.keys("demo").size(), 4u * each);
}

}  // namespace
}  // namespace s3server::test
