#include <algorithm>
#include <sstream>

#include "support/servers/ScriptedServer.hpp"
#include "wire/WireTable.hpp"

using namespace testsupport;
using storage::s3provider::S3CloudClient;

namespace {

bool startsWith(const std::string& text, const std::string& beginning) {
    return text.compare(0, beginning.size(), beginning) == 0;
}

// What an object's owner may decide, and this client never does.
bool isChoiceOfTheCaller(const std::string& header) {
    constexpr const char* choices[] = {"x-amz-acl",         "x-amz-grant",
                                       "x-amz-meta",        "x-amz-storage-class",
                                       "x-amz-tagging",     "x-amz-server-side",
                                       "x-amz-checksum",    "x-amz-sdk-checksum",
                                       "cache-control",     "x-amz-website-redirect",
                                       "x-amz-object-lock", "if-"};
    return std::any_of(std::begin(choices), std::end(choices),
                       [&](const char* choice) { return startsWith(header, choice); });
}

const std::string newUpload =
    "<InitiateMultipartUploadResult><UploadId>ID</UploadId></InitiateMultipartUploadResult>";

void expectDefaultsIn(const std::function<void(S3CloudClient&)>& call, const std::string& reply) {
    ScriptedServer server({{Step::send(reply)}});
    S3CloudClient client("b", plainClient(server.endpoint()), {1, 0}, "eu-west-3");
    call(client);
    const auto requests = server.requests();
    ASSERT_EQ(requests.size(), 1u);
    for (const auto& [name, value] : requests[0].headers)
        EXPECT_FALSE(isChoiceOfTheCaller(name)) << name;
}

}  // namespace

TEST(CloudClientDefaults, LeaveEveryChoiceAboutAnObjectToS3) {
    std::istringstream in("content");
    expectDefaultsIn([&](auto& client) { client.upload("k", in, 7); }, httpReply(200));
    expectDefaultsIn([&](auto& client) { client.uploadPart("k", "ID", {0, 0, 7, ""}, in); }, httpReply(200));
    expectDefaultsIn(
        [](auto& client) {
            client.reusePart("k", "ID", {0, 0, 7, ""});
        },
        httpReply(200, {}, "<CopyPartResult><ETag>t</ETag></CopyPartResult>"));
    expectDefaultsIn([](auto& client) { client.completeMultipartUpload("k", "ID", {}); },
                     httpReply(200, {}, "<CompleteMultipartUploadResult/>"));
    for (const char* ignored : {"", "text/plain"}) {
        expectDefaultsIn([&](auto& client) { client.startMultipartUpload("k", ignored); },
                         httpReply(200, {}, newUpload));
    }
}

TEST(CloudClientDefaults, AreTheSameWhateverTheSecondArgumentOfAStartSays) {
    std::vector<std::string> contentTypes;
    for (const char* ignored : {"", "text/plain"}) {
        ScriptedServer server({{Step::send(httpReply(200, {}, newUpload))}});
        S3CloudClient client("b", plainClient(server.endpoint()), {1, 0}, "eu-west-3");
        client.startMultipartUpload("k", ignored);
        ASSERT_EQ(server.requests().size(), 1u);
        EXPECT_EQ(server.requests()[0].target, "/b/k?uploads");
        EXPECT_EQ(server.requests()[0].body, "");
        contentTypes.push_back(server.requests()[0].header("content-type"));
    }
    EXPECT_EQ(contentTypes[0], contentTypes[1]);
}
