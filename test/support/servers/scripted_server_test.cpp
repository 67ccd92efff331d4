#include "support/servers/ScriptedServer.hpp"

#include <curl/curl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <memory>
#include <thread>

namespace testsupport {
namespace {

using std::chrono::hours;
using testing::ElementsAre;
using testing::Pair;

struct Answer {
    CURLcode code = CURLE_OK;
    long status = 0;
    std::string body;
};

std::size_t append(const char* data, std::size_t size, std::size_t count, void* body) {
    static_cast<std::string*>(body)->append(data, size * count);
    return size * count;
}

/// One libcurl handle, so requests share a connection where the server lets them.
class HttpClient {
public:
    HttpClient() : curl_(curl_easy_init()) {
        curl_easy_setopt(curl_, CURLOPT_WRITEFUNCTION, append);
        curl_easy_setopt(curl_, CURLOPT_PROXY, "");
    }
    ~HttpClient() { curl_easy_cleanup(curl_); }
    HttpClient(const HttpClient&) = delete;
    HttpClient& operator=(const HttpClient&) = delete;

    void trust(const TestAuthority& authority) {
        curl_easy_setopt(curl_, CURLOPT_CAINFO, authority.caFile().c_str());
    }

    void trustFolder(const TestAuthority& authority) {
        curl_easy_setopt(curl_, CURLOPT_CAINFO, nullptr);
        curl_easy_setopt(curl_, CURLOPT_CAPATH, authority.caFolder().c_str());
    }

    void useProxy(const std::string& proxy) { curl_easy_setopt(curl_, CURLOPT_PROXY, proxy.c_str()); }

    Answer get(const std::string& url) {
        Answer answer;
        curl_easy_setopt(curl_, CURLOPT_URL, url.c_str());
        curl_easy_setopt(curl_, CURLOPT_WRITEDATA, &answer.body);
        answer.code = curl_easy_perform(curl_);
        curl_easy_getinfo(curl_, CURLINFO_RESPONSE_CODE, &answer.status);
        return answer;
    }

    /// And hangs up.
    static void sendRaw(const std::string& endpoint, const std::string& bytes) {
        CURL* const raw = curl_easy_init();
        curl_easy_setopt(raw, CURLOPT_URL, ("http://" + endpoint).c_str());
        curl_easy_setopt(raw, CURLOPT_PROXY, "");
        curl_easy_setopt(raw, CURLOPT_CONNECT_ONLY, 1L);
        std::size_t sent = 0;
        if (curl_easy_perform(raw) == CURLE_OK) curl_easy_send(raw, bytes.data(), bytes.size(), &sent);
        curl_easy_cleanup(raw);
    }

    Answer post(const std::string& url, const std::string& body) {
        curl_easy_setopt(curl_, CURLOPT_COPYPOSTFIELDS, body.c_str());
        return get(url);
    }

private:
    CURL* curl_;
};

Script ok(std::string_view body) {
    return {Step::send(httpReply(200, {}, body))};
}

TEST(ScriptedServer, AnswersRequestsByItsScriptsInOrder) {
    ScriptedServer server({ok("one"), {Step::send(httpReply(404))}, ok("three")});
    HttpClient client;
    EXPECT_EQ(client.get(server.endpoint() + "/a").body, "one");
    EXPECT_EQ(client.get(server.endpoint() + "/b").status, 404);
    EXPECT_EQ(server.unusedScripts(), 1U);
    EXPECT_EQ(client.get(server.endpoint() + "/c").body, "three");
    EXPECT_EQ(server.unusedScripts(), 0U);
}

TEST(ScriptedServer, RecordsRequestsAsTheyWereSent) {
    ScriptedServer server({ok("")});
    HttpClient client;
    client.post(server.endpoint() + "/a%20b?c", "content");
    const std::vector<SeenRequest> seen = server.requests();
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].method, "POST");
    EXPECT_EQ(seen[0].target, "/a%20b?c");
    EXPECT_EQ(seen[0].version, "HTTP/1.1");
    EXPECT_EQ(seen[0].body, "content");
    EXPECT_TRUE(seen[0].bodyComplete);
    EXPECT_FALSE(seen[0].tls);
    EXPECT_EQ(seen[0].header("CONTENT-LENGTH"), "7");
    EXPECT_THAT(seen[0].headers, ElementsAre(Pair("Host", server.endpoint()), Pair("Accept", "*/*"),
                                             Pair("Content-Length", "7"),
                                             Pair("Content-Type", "application/x-www-form-urlencoded")));
}

TEST(ScriptedServer, KeepsTheHeadWithItsBlanks) {
    ScriptedServer server({ok("")});
    const std::string head = "GET / HTTP/1.1\r\nA: \t b \r\nC:d\r\nE:";
    HttpClient::sendRaw(server.endpoint(), head + "\r\n\r\n");
    while (server.requests().empty())
        std::this_thread::yield();
    EXPECT_EQ(server.requests()[0].head, head);
    EXPECT_THAT(server.requests()[0].headers, ElementsAre(Pair("A", "b"), Pair("C", "d"), Pair("E", "")));
}

TEST(ScriptedServer, NumbersConnectionsAsTheyCome) {
    ScriptedServer server({ok(""), {Step::send(httpReply(200)), Step::close()}, ok("")});
    HttpClient client;
    for (int i = 0; i < 3; ++i)
        client.get(server.endpoint());
    std::vector<int> connections;
    for (const SeenRequest& request : server.requests())
        connections.push_back(request.connection);
    EXPECT_THAT(connections, ElementsAre(1, 1, 2));
}

TEST(ScriptedServer, RefusesAndCountsRequestsBeyondItsScripts) {
    ScriptedServer server;
    HttpClient client;
    const Answer answer = client.get(server.endpoint());
    EXPECT_EQ(answer.status, 599);
    EXPECT_THAT(answer.body, testing::HasSubstr("<Code>UnexpectedRequest</Code>"));
    EXPECT_EQ(server.unexpectedRequests(), 1U);
}

TEST(ScriptedServer, RepeatsItsLastScriptIfAskedTo) {
    ScriptedServer::Options options;
    options.repeatLast = true;
    ScriptedServer server({ok("first"), ok("last")}, options);
    HttpClient client;
    client.get(server.endpoint());
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(client.get(server.endpoint()).body, "last");
    EXPECT_EQ(server.unexpectedRequests(), 0U);
}

TEST(ScriptedServer, SendsABodyPieceByPiece) {
    ScriptedServer server({{Step::send(httpReply(200, {{"Content-Length", "3006"}})),
                            Step::sendRepeat("abc", 1000), Step::drip("def", std::chrono::milliseconds(1)),
                            Step::sendMade([] { return std::string("ghi"); })}});
    HttpClient client;
    const Answer answer = client.get(server.endpoint());
    EXPECT_EQ(answer.body.size(), 3006U);
    EXPECT_EQ(answer.body.substr(2997), "abcdefghi");
}

TEST(ScriptedServer, LeavesABodyUnreadIfToldTo) {
    ScriptedServer server({{Step::noReadBody(), Step::send(httpReply(403)), Step::close()}});
    HttpClient client;
    EXPECT_EQ(client.post(server.endpoint(), "content").status, 403);
    EXPECT_FALSE(server.requests().at(0).bodyRead);
}

TEST(ScriptedServer, ResetsAConnectionInTheMiddleOfAnAnswer) {
    ScriptedServer server({{Step::send("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n"), Step::reset()}});
    HttpClient client;
    EXPECT_EQ(client.get(server.endpoint()).code, CURLE_RECV_ERROR);
}

TEST(ScriptedServer, EndsThoughAScriptSleeps) {
    std::promise<void> headIsSent;
    const auto firstByte = [&headIsSent] {
        headIsSent.set_value();
        return std::string("h");
    };
    auto server = std::make_unique<ScriptedServer>(
        std::vector<Script>{{Step::send(httpReply(200, {{"Content-Length", "5"}})), Step::sendMade(firstByte),
                             Step::sleep(hours(1))}});
    std::thread client(
        [endpoint = server->endpoint()] { EXPECT_EQ(HttpClient().get(endpoint).code, CURLE_PARTIAL_FILE); });
    headIsSent.get_future().wait();
    server.reset();
    client.join();
}

TEST(ScriptedServer, GrantsATunnelAndSpeaksTlsInIt) {
    TestAuthority authority;
    ScriptedServer::Options options;
    options.certificate = authority.issue({"bucket.example.com"});
    ScriptedServer server({ok("through")}, options);
    HttpClient client;
    client.trust(authority);
    client.useProxy("http://" + server.endpoint());
    EXPECT_EQ(client.get("https://bucket.example.com/key").body, "through");
    const std::vector<SeenRequest> seen = server.requests();
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0].target, "bucket.example.com:443");
    EXPECT_FALSE(seen[0].tls);
    EXPECT_EQ(seen[1].target, "/key");
    EXPECT_TRUE(seen[1].tls);
}

TEST(ScriptedServer, AnswersAConnectAsScripted) {
    ScriptedServer server({{Step::connectReply(), Step::send(httpReply(407))}});
    HttpClient client;
    client.useProxy("http://" + server.endpoint());
    EXPECT_EQ(client.get("https://bucket.example.com/key").code, CURLE_RECV_ERROR);
    EXPECT_EQ(server.unusedScripts(), 0U);
}

struct TlsCase {
    const char* name;
    std::vector<std::string> certifiedNames;
    Validity validity;
    CURLcode code;
};

class ServerCertificate : public testing::TestWithParam<TlsCase> {};

TEST_P(ServerCertificate, IsTakenOnlyIfItFits) {
    TestAuthority authority;
    ScriptedServer::Options options;
    options.certificate = authority.issue(GetParam().certifiedNames, GetParam().validity);
    options.tls = true;
    ScriptedServer server({ok("")}, options);
    HttpClient client;
    client.trust(authority);
    EXPECT_EQ(client.get("https://" + server.endpoint()).code, GetParam().code);
    EXPECT_EQ(server.connections(), 1U);
    EXPECT_EQ(server.bytesReceived() > 0, GetParam().code == CURLE_OK);
}

INSTANTIATE_TEST_SUITE_P(
    All, ServerCertificate,
    testing::Values(TlsCase{"Fits", {"127.0.0.1"}, Validity::Current, CURLE_OK},
                    TlsCase{"HasAlsoAnotherName", {"localhost", "127.0.0.1"}, Validity::Current, CURLE_OK},
                    TlsCase{"Expired", {"127.0.0.1"}, Validity::Expired, CURLE_PEER_FAILED_VERIFICATION},
                    TlsCase{"NotValidYet", {"127.0.0.1"}, Validity::NotYet, CURLE_PEER_FAILED_VERIFICATION},
                    TlsCase{"OtherName", {"localhost"}, Validity::Current, CURLE_PEER_FAILED_VERIFICATION}),
    [](const auto& tested) { return tested.param.name; });

TEST(ScriptedServer, HoldsOneConversationAtItsTwoPorts) {
    TestAuthority authority;
    ScriptedServer::Options options;
    options.certificate = authority.issue({"127.0.0.1"});
    options.tlsToo = true;
    ScriptedServer server({ok("one"), ok("two")}, options);
    HttpClient client;
    client.trust(authority);
    EXPECT_EQ(client.get("http://" + server.endpoint()).body, "one");
    EXPECT_EQ(client.get("https://127.0.0.1:" + std::to_string(server.secondPort())).body, "two");
    const std::vector<SeenRequest> seen = server.requests();
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_FALSE(seen[0].tls);
    EXPECT_TRUE(seen[1].tls);
    EXPECT_EQ(seen[1].connection, 2);
}

TEST(TestAuthority, IsFoundInItsFolder) {
    TestAuthority authority;
    ScriptedServer::Options options;
    options.certificate = authority.issue({"127.0.0.1"});
    options.tls = true;
    ScriptedServer server({ok("")}, options);
    HttpClient client;
    client.trustFolder(authority);
    EXPECT_EQ(client.get("https://" + server.endpoint()).code, CURLE_OK);
}

TEST(ScriptedServer, CountsTheBytesOfRequestsThatNeverBecomeWhole) {
    ScriptedServer server;
    HttpClient::sendRaw(server.endpoint(), "GET / HTTP/1.1\r\nHo");
    while (server.connections() == 0)
        std::this_thread::yield();
    EXPECT_TRUE(server.waitForConnectionsToEnd());
    EXPECT_EQ(server.bytesReceived(), 18U);
    EXPECT_TRUE(server.requests().empty());
}

TEST(TestAuthority, IsNotTakenForAnother) {
    TestAuthority authority;
    const TestAuthority trusted;
    ScriptedServer::Options options;
    options.certificate = authority.issue({"127.0.0.1"});
    options.tls = true;
    ScriptedServer server({ok("")}, options);
    HttpClient client;
    client.trust(trusted);
    EXPECT_EQ(client.get("https://" + server.endpoint()).code, CURLE_PEER_FAILED_VERIFICATION);
}

}  // namespace
}  // namespace testsupport
