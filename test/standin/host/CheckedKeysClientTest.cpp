#include "cloudprovider/CheckedKeysClient.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <sstream>
#include <storage/cloudprovider/buildCloudProvider.hpp>
#include <storage/cloudprovider/keyCheck.hpp>

#include "MemoryClient.hpp"

namespace {

using namespace storage::cloudprovider;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StrEq;
using testing::ThrowsMessage;

/// While it lives, keys with an "x" are refused.
class RefusedX {
public:
    RefusedX() {
        useKeyCheck([](const std::string& key) -> std::optional<std::string> {
            if (key.find('x') == std::string::npos) return std::nullopt;
            return "it has an x";
        });
    }
    ~RefusedX() { useKeyCheck({}); }
    RefusedX(const RefusedX&) = delete;
    RefusedX& operator=(const RefusedX&) = delete;
};

/// An operation with a key, and what the client has to have seen of it.
struct Operation {
    const char* name;
    std::function<void(CloudClient&, const std::string& key)> call;
    std::string seen;  ///< without the key "good"
};

const Operation operations[] = {
    {"stat", [](auto& client, auto& key) { client.stat(key); }, "stat good"},
    {"remove", [](auto& client, auto& key) { client.remove(key); }, "remove good"},
    {"download",
     [](auto& client, auto& key) {
         std::ostringstream out;
         client.download(key, out, 1, 2);
         EXPECT_EQ(out.str(), "bc");
     },
     "download good 1-2"},
    {"upload",
     [](auto& client, auto& key) {
         std::istringstream in("content");
         client.upload(key, in, 7);
         EXPECT_EQ(in.peek(), EOF);
     },
     "upload good 7"},
    {"listParts", [](auto& client, auto& key) { client.listParts(key); }, "listParts good"},
    {"startMultipartUpload",
     [](auto& client, auto& key) { EXPECT_EQ(client.startMultipartUpload(key, ""), "id"); },
     "startMultipartUpload good"},
    {"uploadPart",
     [](auto& client, auto& key) {
         std::istringstream in;
         EXPECT_EQ(client.uploadPart(key, "id", {3, 0, 0, ""}, in), "tag");
     },
     "uploadPart good id 3"},
    {"reusePart",
     [](auto& client, auto& key) {
         EXPECT_EQ(client.reusePart(key, "id", {3, 0, 0, ""}), "tag");
     },
     "reusePart good id 3"},
    {"abortMultipartUpload", [](auto& client, auto& key) { client.abortMultipartUpload(key, "id"); },
     "abortMultipartUpload good id"},
    {"completeMultipartUpload",
     [](auto& client, auto& key) {
         client.completeMultipartUpload(key, "id", {{}, {}});
     },
     "completeMultipartUpload good id 2"},
};

void PrintTo(const Operation& operation, std::ostream* out) {
    *out << operation.name;
}

class CheckedKeysClientTest : public testing::TestWithParam<Operation> {
protected:
    CheckedKeysClientTest() { memory->objects["good"] = "abcd"; }

    const std::shared_ptr<testsupport::MemoryClient> memory = std::make_shared<testsupport::MemoryClient>();
    CheckedKeysClient client{memory};
};

TEST_P(CheckedKeysClientTest, IsntHandedAKeyThatIsRefused) {
    const RefusedX refused;
    EXPECT_THAT([&] { GetParam().call(client, "a/x"); },
                ThrowsMessage<UnaddressableKey>(StrEq("cannot address the key \"a/x\": it has an x")));
    EXPECT_THAT(memory->calls, IsEmpty());
}

TEST_P(CheckedKeysClientTest, IsHandedAnyOtherWithAllElse) {
    const RefusedX refused;
    GetParam().call(client, "good");
    EXPECT_THAT(memory->calls, ElementsAre(GetParam().seen));
}

INSTANTIATE_TEST_SUITE_P(Operations, CheckedKeysClientTest, testing::ValuesIn(operations),
                         [](const auto& test) { return test.param.name; });

TEST(CheckedKeys, HaveNothingToDoWithPrefixesAndTheRoot) {
    const RefusedX refused;
    const auto memory = std::make_shared<testsupport::MemoryClient>();
    memory->objects["x/a"] = "1";
    CheckedKeysClient client(memory);
    client.checkRootValidity("x");
    std::string token;
    EXPECT_EQ(client.list("x/", token, {"/", 0}).size(), 1u);
    EXPECT_THAT(memory->calls, ElementsAre("checkRootValidity", "list x/"));
}

TEST(CheckedKeys, AreAllGoodAfterTheCheckIsTakenBack) {
    { const RefusedX refused; }
    EXPECT_NO_THROW(requireAddressable("x"));
}

// Also a provider that was there before the check.
TEST(CheckedKeys, AreThoseOfEveryProvider) {
    const auto memory = std::make_shared<testsupport::MemoryClient>();
    memory->objects["a/x"] = "content";
    const auto provider = buildCloudProvider(memory, FolderPolicy::Implicit, true);
    const RefusedX refused;
    EXPECT_THROW(provider->stat(u"/a/x"), UnaddressableKey);
    EXPECT_THROW(provider->openRead(u"/a/x"), UnaddressableKey);
    EXPECT_THROW(provider->remove(u"/a/x"), UnaddressableKey);
    EXPECT_THROW(provider->openWrite(u"/a/x")->commit(), UnaddressableKey);
    EXPECT_THAT(memory->calls, IsEmpty());
    EXPECT_EQ(provider->list(u"/a").size(), 1u);
}

}  // namespace
