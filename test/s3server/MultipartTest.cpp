#include <gmock/gmock.h>

#include "Client.hpp"
#include "s3server/Server.hpp"

namespace s3server::test {
namespace {

using testing::ElementsAre;
using testing::Eq;
using testing::IsEmpty;
using testing::Optional;
using testing::SizeIs;

const std::string fiveMiB(std::size_t{5} << 20U, 'a');

class Multipart : public testing::Test {
protected:
    Multipart() { server.createBucket("demo"); }

    static Options openToAll() {
        Options options;
        options.checkSignatures = false;
        return options;
    }
    std::string start(const std::string& key = "k") {
        return client.post("/demo/" + key + "?uploads", "").element("UploadId");
    }
    static std::string part(const std::string& id, const std::string& number, const std::string& key = "k") {
        return "/demo/" + key + "?partNumber=" + number + "&uploadId=" + id;
    }
    Answer complete(const std::string& id, const std::vector<std::pair<int, std::string>>& parts) {
        std::string list = "<CompleteMultipartUpload>";
        for (const auto& [number, etag] : parts)
            list += "<Part><PartNumber>" + std::to_string(number) + "</PartNumber><ETag>" + etag +
                    "</ETag></Part>";
        return client.post("/demo/k?uploadId=" + id, list + "</CompleteMultipartUpload>");
    }

    Server server{openToAll()};
    Client client{server.endpoint()};
};

TEST_F(Multipart, LinksItsPartsInOrder) {
    const std::string id = client.post("/demo/k?uploads", "", {{"x-amz-meta-a", "b"}}).element("UploadId");
    const std::string second = client.put(part(id, "7"), "end").header("etag");
    const std::string first = client.put(part(id, "2"), fiveMiB).header("etag");
    EXPECT_EQ(server.object("demo", "k"), std::nullopt);
    EXPECT_EQ(server.openUploads("demo"), 1u);

    const Answer answer = complete(id, {{2, first}, {7, second}});
    EXPECT_EQ(answer.status, 200);
    EXPECT_EQ(answer.element("Key"), "k");
    // The MD5 of the two parts' digests, and their number.
    EXPECT_EQ(answer.element("ETag"), "&quot;cc8f6f16b44b75adde6349ab98aee432-2&quot;");
    EXPECT_THAT(server.object("demo", "k"), Optional(Eq(fiveMiB + "end")));
    EXPECT_EQ(client.head("/demo/k").header("x-amz-meta-a"), "b");
    EXPECT_EQ(server.openUploads("demo"), 0u);
}

TEST_F(Multipart, TakesTheLastOfTwoPartsWithOneNumber) {
    const std::string id = start();
    const std::string old = client.put(part(id, "1"), "old").header("etag");
    const std::string replaced = client.put(part(id, "1"), "new").header("etag");
    EXPECT_EQ(complete(id, {{1, old}}).element("Code"), "InvalidPart");
    EXPECT_EQ(complete(id, {{1, replaced}}).status, 200);
    EXPECT_THAT(server.object("demo", "k"), Optional(Eq("new")));
}

TEST_F(Multipart, LeavesOutPartsThatArentListed) {
    const std::string id = start();
    client.put(part(id, "1"), "one");
    const std::string second = client.put(part(id, "2"), "two").header("etag");
    EXPECT_EQ(complete(id, {{2, second}}).status, 200);
    EXPECT_THAT(server.object("demo", "k"), Optional(Eq("two")));
}

TEST_F(Multipart, TakesTagsWithoutQuotes) {
    const std::string id = start();
    const std::string etag = client.put(part(id, "1"), "x").header("etag");
    EXPECT_EQ(complete(id, {{1, etag.substr(1, 32)}}).status, 200);
}

TEST_F(Multipart, RefusesAListThatIsWrongAndStaysOpen) {
    const std::string id = start();
    const std::string first = client.put(part(id, "1"), "one").header("etag");
    const std::string second = client.put(part(id, "2"), "two").header("etag");
    EXPECT_EQ(complete(id, {}).element("Code"), "MalformedXML");
    EXPECT_EQ(client.post("/demo/k?uploadId=" + id, "").element("Code"), "MalformedXML");
    EXPECT_EQ(complete(id, {{2, second}, {1, first}}).element("Code"), "InvalidPartOrder");
    EXPECT_EQ(complete(id, {{1, first}, {1, first}}).element("Code"), "InvalidPartOrder");
    EXPECT_EQ(complete(id, {{1, first}, {3, second}}).element("Code"), "InvalidPart");
    EXPECT_EQ(complete(id, {{1, second}}).element("Code"), "InvalidPart");
    const Answer tooSmall = complete(id, {{1, first}, {2, second}});
    EXPECT_EQ(tooSmall.element("Code"), "EntityTooSmall");
    EXPECT_EQ(tooSmall.element("PartNumber"), "1");
    EXPECT_EQ(tooSmall.element("MinSizeAllowed"), "5242880");
    EXPECT_EQ(server.openUploads("demo"), 1u);
    EXPECT_EQ(server.object("demo", "k"), std::nullopt);
}

TEST_F(Multipart, HasPartNumbersFromOneToTenThousand) {
    const std::string id = start();
    EXPECT_EQ(client.put(part(id, "10000"), "x").status, 200);
    for (const char* const number : {"0", "10001", "-1", "a", "2147483647", "99999999999999999999"})
        EXPECT_EQ(client.put(part(id, number), "x").element("Code"), "InvalidArgument") << number;
}

TEST_F(Multipart, IsKnownByItsIdAndKeyTogether) {
    const std::string id = start();
    EXPECT_EQ(client.put(part("other", "1"), "x").element("Code"), "NoSuchUpload");
    EXPECT_EQ(client.put(part(id, "1", "other"), "x").element("Code"), "NoSuchUpload");
    EXPECT_EQ(client.remove("/demo/k?uploadId=other").element("Code"), "NoSuchUpload");
}

TEST_F(Multipart, IsGoneOnceCompletedOrAborted) {
    const std::string completed = start();
    const std::string etag = client.put(part(completed, "1"), "x").header("etag");
    complete(completed, {{1, etag}});
    EXPECT_EQ(complete(completed, {{1, etag}}).element("Code"), "NoSuchUpload");

    const std::string aborted = start();
    client.put(part(aborted, "1"), "x");
    EXPECT_EQ(client.remove("/demo/k?uploadId=" + aborted).status, 204);
    EXPECT_EQ(client.remove("/demo/k?uploadId=" + aborted).element("Code"), "NoSuchUpload");
    EXPECT_EQ(server.openUploads("demo"), 0u);
}

TEST_F(Multipart, CopiesPartsOutOfObjects) {
    server.putObject("demo", "from", "0123456789");
    const std::string id = start();
    const Answer answer = client.put(
        part(id, "1"), "", {{"x-amz-copy-source", "demo/from"}, {"x-amz-copy-source-range", "bytes=3-5"}});
    EXPECT_EQ(answer.status, 200);
    const std::string etag = answer.element("ETag");
    EXPECT_EQ(etag, "&quot;d81f9c1be2e08964bf9f24b15f0e4900&quot;") << "the MD5 of 345";
    EXPECT_EQ(complete(id, {{1, etag}}).status, 200);
    EXPECT_THAT(server.object("demo", "k"), Optional(Eq("345")));
}

TEST_F(Multipart, CopiesNoBytesThatArentThere) {
    server.putObject("demo", "from", "0123456789");
    const std::string id = start();
    const auto copy = [&](const std::string& range) {
        return client.put(part(id, "1"), "",
                          {{"x-amz-copy-source", "demo/from"}, {"x-amz-copy-source-range", range}});
    };
    EXPECT_EQ(copy("bytes=5-10").element("Code"), "InvalidArgument");
    EXPECT_EQ(copy("bytes=0-18446744073709551615").element("Code"), "InvalidArgument");
    EXPECT_THAT(client.get("/demo/k?uploadId=" + id).elements("Part"), IsEmpty());
}

TEST_F(Multipart, ListsItsPartsInPages) {
    const std::string id = start();
    for (const char* const number : {"1", "3", "5"})
        client.put(part(id, number), number);
    const Answer first = client.get("/demo/k?max-parts=2&uploadId=" + id);
    EXPECT_THAT(first.elements("PartNumber"), ElementsAre("1", "3"));
    EXPECT_EQ(first.element("IsTruncated"), "true");
    EXPECT_EQ(first.element("NextPartNumberMarker"), "3");
    const Answer last = client.get("/demo/k?part-number-marker=3&uploadId=" + id);
    EXPECT_THAT(last.elements("PartNumber"), ElementsAre("5"));
    EXPECT_EQ(last.element("IsTruncated"), "false");
    EXPECT_EQ(last.element("Size"), "1");
}

TEST_F(Multipart, IsListedByKeyInPages) {
    for (const char* const key : {"b", "a", "c", "a"})
        start(key);
    const Answer first = client.get("/demo?uploads&max-uploads=2");
    EXPECT_THAT(first.elements("Key"), ElementsAre("a", "a"));
    EXPECT_EQ(first.element("IsTruncated"), "true");
    const Answer second =
        client.get("/demo?uploads&key-marker=a&upload-id-marker=" + first.element("NextUploadIdMarker"));
    EXPECT_THAT(second.elements("Key"), ElementsAre("b", "c"));
    EXPECT_THAT(client.get("/demo?uploads&prefix=b").elements("Upload"), SizeIs(1));
    EXPECT_THAT(client.get("/demo?uploads&key-marker=b").elements("Key"), ElementsAre("c"));
}

}  // namespace
}  // namespace s3server::test
