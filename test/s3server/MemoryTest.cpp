#include <gmock/gmock.h>

#include <array>
#include <stdexcept>
#include <thread>

#include "Client.hpp"
#include "s3server/Server.hpp"

namespace s3server::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr std::size_t mebibyte = std::size_t{1} << 20U;

/// A server with room for 10 MiB.
class MemoryLimit : public testing::Test {
protected:
    MemoryLimit() { server.createBucket("demo"); }

    static Options small() {
        Options options;
        options.checkSignatures = false;
        options.memoryLimit = 10 * mebibyte;
        return options;
    }
    static std::string body(std::size_t mebibytes) { return std::string(mebibytes * mebibyte, 'x'); }
    static void expectRefusal(const Answer& answer) {
        EXPECT_EQ(answer.status, 507);
        EXPECT_EQ(answer.element("Code"), "InsufficientStorage");
        EXPECT_EQ(answer.element("MaxStorage"), "10485760");
    }
    std::string newUpload() { return client.post("/demo/big?uploads", "").element("UploadId"); }
    Answer putPart(const std::string& id, unsigned number, const std::string& bytes) {
        return client.put("/demo/big?partNumber=" + std::to_string(number) + "&uploadId=" + id, bytes);
    }
    /// What a connection has let go of is gone once it has said the next thing.
    std::uint64_t used() {
        client.head("/demo");
        return server.memoryUsed();
    }

    Server server{small()};
    Client client{server.endpoint()};
};

TEST_F(MemoryLimit, RefusesAnObjectBeyondItAndStoresNothingOfIt) {
    EXPECT_EQ(client.put("/demo/first", body(6)).status, 200);
    const std::uint64_t before = used();
    EXPECT_GE(before, 6 * mebibyte);
    expectRefusal(client.put("/demo/second", body(6)));
    EXPECT_THAT(server.keys("demo"), ElementsAre("first"));
    EXPECT_EQ(used(), before);
    EXPECT_EQ(client.put("/demo/third", body(3)).status, 200) << "a smaller one still fits";
    EXPECT_EQ(server.connections(), 1u);
}

TEST_F(MemoryLimit, HasRoomAgainOnceObjectsAreDeleted) {
    for (const char* const key : {"/demo/1", "/demo/2", "/demo/3"})
        EXPECT_EQ(client.put(key, body(3)).status, 200);
    expectRefusal(client.put("/demo/4", body(3)));
    EXPECT_EQ(client.remove("/demo/1").status, 204);
    EXPECT_EQ(client.put("/demo/4", body(3)).status, 200);
    expectRefusal(client.put("/demo/5", body(3)));
    const std::string both = "<Delete><Object><Key>2</Key></Object><Object><Key>3</Key></Object></Delete>";
    EXPECT_EQ(client.post("/demo?delete", both, {{"Content-MD5", "WFBRm+swhAdau6UJ1wQVYA=="}}).status, 200);
    EXPECT_EQ(client.put("/demo/5", body(3)).status, 200);
    client.remove("/demo/4");
    client.remove("/demo/5");
    EXPECT_EQ(used(), 0u);
}

TEST_F(MemoryLimit, CountsWhatAnObjectReplacesUntilItIsReplaced) {
    client.put("/demo/k", body(4));
    EXPECT_EQ(client.put("/demo/k", body(5)).status, 200);
    EXPECT_LT(used(), 6 * mebibyte);
    expectRefusal(client.put("/demo/k", body(6)));
    EXPECT_EQ(server.object("demo", "k"), body(5)) << "the old one stays";
}

TEST_F(MemoryLimit, CountsTheBytesThatCopiesShareOnce) {
    client.put("/demo/k", body(8));
    EXPECT_EQ(client.put("/demo/copy", "", {{"x-amz-copy-source", "demo/k"}}).status, 200);
    EXPECT_LT(used(), 9 * mebibyte);
    client.remove("/demo/k");
    EXPECT_GE(used(), 8 * mebibyte);
    client.remove("/demo/copy");
    EXPECT_EQ(used(), 0u);
}

TEST_F(MemoryLimit, RefusesAPartBeyondItAndHasRoomAgainOnceTheUploadIsAborted) {
    const std::string id = newUpload();
    EXPECT_EQ(putPart(id, 1, body(6)).status, 200);
    expectRefusal(putPart(id, 2, body(6)));
    EXPECT_EQ(client.get("/demo/big?uploadId=" + id).elements("PartNumber").size(), 1u);
    EXPECT_EQ(client.remove("/demo/big?uploadId=" + id).status, 204);
    EXPECT_EQ(used(), 0u);
}

TEST_F(MemoryLimit, CountsThePartsOfABucketThatIsDeletedNoMore) {
    putPart(newUpload(), 1, body(6));
    EXPECT_EQ(client.remove("/demo").status, 204);
    EXPECT_EQ(used(), 0u);
}

TEST_F(MemoryLimit, LetsAnUploadBeCompletedWhenAllIsFull) {
    const std::string id = newUpload();
    const std::string first = putPart(id, 1, body(5)).header("etag");
    const std::string rest = std::string(10 * mebibyte - used() - 1024, 'x');
    const std::string second = putPart(id, 2, rest).header("etag");
    expectRefusal(client.put("/demo/other", "x" + std::string(1024, 'x')));
    const auto part = [](int number, const std::string& etag) {
        return "<Part><PartNumber>" + std::to_string(number) + "</PartNumber><ETag>" + etag +
               "</ETag></Part>";
    };
    const std::string list =
        "<CompleteMultipartUpload>" + part(1, first) + part(2, second) + "</CompleteMultipartUpload>";
    EXPECT_EQ(client.post("/demo/big?uploadId=" + id, list).status, 200);
    EXPECT_EQ(server.object("demo", "big"), body(5) + rest);
    client.remove("/demo/big");
    EXPECT_EQ(used(), 0u);
}

TEST_F(MemoryLimit, CountsABodyWhileItArrives) {
    {
        RawConnection slow(server.port());
        slow.send("PUT /demo/slow HTTP/1.1\r\nHost: h\r\nContent-Length: 8388608\r\n\r\n" + body(7));
        while (server.memoryUsed() < 7 * mebibyte)
            std::this_thread::yield();
        expectRefusal(client.put("/demo/k", body(4)));
    }
    while (server.memoryUsed() != 0)
        std::this_thread::yield();
    EXPECT_EQ(client.put("/demo/k", body(4)).status, 200);
}

TEST_F(MemoryLimit, RefusesABodyOfUnknownLengthAsItGrows) {
    client.put("/demo/first", body(8));
    const std::uint64_t before = used();
    RawConnection connection(server.port());
    connection.send(
        "PUT /demo/k HTTP/1.1\r\nHost: h\r\nConnection: close\r\nTransfer-Encoding: chunked\r\n\r\n"
        "300000\r\n" +
        body(3) + "\r\n0\r\n\r\n");
    const std::string answer = connection.readToEnd();
    EXPECT_THAT(answer, StartsWith("HTTP/1.1 507 Insufficient Storage\r\n"));
    EXPECT_THAT(answer, HasSubstr("<Code>InsufficientStorage</Code>"));
    EXPECT_THAT(server.keys("demo"), ElementsAre("first"));
    EXPECT_EQ(used(), before);
}

TEST_F(MemoryLimit, CountsKeysAndHeadersSoThatEmptyObjectsEndSomewhere) {
    const Headers metadata{{"x-amz-meta-long", std::string(50'000, 'm')}};
    int stored = 0;
    while (client.put("/demo/" + std::to_string(stored), "", metadata).status == 200)
        ASSERT_LT(++stored, 250);
    EXPECT_GT(stored, 150);
    expectRefusal(client.put("/demo/one-more", "", metadata));
    expectRefusal(client.post("/demo/one-more?uploads", "", metadata));
}

TEST_F(MemoryLimit, HoldsForWhatTheProgramStoresItself) {
    server.putObject("demo", "k", body(6));
    EXPECT_THROW(server.putObject("demo", "more", body(6)), std::runtime_error);
    EXPECT_THAT(server.keys("demo"), ElementsAre("k"));
}

TEST_F(MemoryLimit, KeepsAllInOrderWhenManyAskForTheLastRoom) {
    std::array<std::thread, 4> writers;
    for (auto& writer : writers)
        writer = std::thread([this, name = "/demo/" + std::to_string(&writer - writers.data())] {
            Client mine(server.endpoint());
            for (int i = 0; i < 5; ++i) {
                const int status = mine.put(name, body(4)).status;
                EXPECT_TRUE(status == 200 || status == 507) << status;
                EXPECT_LE(server.memoryUsed(), 10 * mebibyte);
                mine.remove(name);
            }
        });
    for (auto& writer : writers)
        writer.join();
    EXPECT_EQ(used(), 0u);
    EXPECT_THAT(server.keys("demo"), IsEmpty());
}

TEST(DefaultMemoryLimit, IsWithinTheMachinesMemory) {
    EXPECT_GT(defaultMemoryLimit(), 64 * mebibyte);
    EXPECT_EQ(Options().memoryLimit, defaultMemoryLimit());
}

}  // namespace
}  // namespace s3server::test
