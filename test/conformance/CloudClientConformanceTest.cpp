#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <boost/date_time/posix_time/posix_time.hpp>
#include <sstream>
#include <thread>

#include "conformance/CloudClientConformance.hpp"
#include "support/plugin/CloudFailure.hpp"

using namespace testsupport;
using namespace storage::cloudprovider;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// Names that encodings trip over.
const std::string awkwardKeys[] = {
    "plain.txt",
    "dir/sub/file",
    "with blank",
    "plus+plus",
    "100%",
    "a%2Bb",
    "amp&and=eq?x#y",
    "quote'\"<tag>",
    "comma,;:@!$*()~_-.",
    "trailing/",
    "umlaut-\xC3\xA4",
    "\xE2\x82\xAC/\xF0\x9F\x93\xA6",
    "back\\slash|{}^[]`",
    std::string(900, 'k'),
};

std::string contentOf(std::size_t size) {
    std::string content(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
        content[i] = static_cast<char>((i * 7 + i / 251) % 256);
    return content;
}

}  // namespace

TEST_P(CloudClientConformance, GivesBackWhatWasStored) {
    for (const std::size_t size :
         {std::size_t{0}, std::size_t{1}, std::size_t{65536}, std::size_t{3000001}}) {
        const auto content = contentOf(size);
        put("object", content);
        expectContent("object", content);
        EXPECT_EQ(client->stat("object")->size, static_cast<std::int64_t>(size));
    }
}

TEST_P(CloudClientConformance, ReplacesAnObjectAsAWhole) {
    put("object", "long content");
    put("object", "short");
    EXPECT_EQ(get("object"), "short");
}

TEST_P(CloudClientConformance, DatesAnObjectWithTheTimeItWasStored) {
    const auto before = boost::posix_time::second_clock::universal_time() - boost::posix_time::minutes(1);
    put("object", "x");
    const auto entry = client->stat("object");
    ASSERT_TRUE(entry);
    EXPECT_GE(entry->lastModified, before);
    EXPECT_LE(entry->lastModified, before + boost::posix_time::minutes(10));
}

TEST_P(CloudClientConformance, FindsNothingWhereNothingIs) {
    put("folder/object", "x");
    EXPECT_FALSE(client->stat("folder/"));
    EXPECT_FALSE(client->stat("missing"));
    expectFailure<ResourceNotFoundException>(u"no_such_key", [&] { get("missing"); });
}

TEST_P(CloudClientConformance, ReadsAnyRange) {
    const auto content = contentOf(1000);
    put("object", content);
    EXPECT_EQ(get("object", 0, 1), content.substr(0, 2));
    EXPECT_EQ(get("object", 100, 199), content.substr(100, 100));
    EXPECT_EQ(get("object", 998, 999), content.substr(998));
    EXPECT_EQ(get("object", 990, 5000), content.substr(990));
    EXPECT_EQ(get("object", 500, 500), content);
}

TEST_P(CloudClientConformance, ReadsARangeOfAnEmptyObjectAsNothing) {
    put("empty", "");
    EXPECT_EQ(get("empty", 0, 99), "");
}

TEST_P(CloudClientConformance, RefusesARangeBehindTheEnd) {
    put("object", "12345");
    expectUnexplainedFailure([&] { get("object", 5, 9); });
}

TEST_P(CloudClientConformance, TakesEveryKeyAsItIs) {
    std::vector<std::string> sorted(std::begin(awkwardKeys), std::end(awkwardKeys));
    std::sort(sorted.begin(), sorted.end());
    for (const auto& key : awkwardKeys)
        put(key, "content of " + key);
    EXPECT_EQ(names("", {"", 0}), sorted);
    for (const auto& key : awkwardKeys) {
        EXPECT_EQ(get(key), "content of " + key);
        ASSERT_TRUE(client->stat(key)) << key;
        EXPECT_EQ(client->stat(key)->name, key);
        client->remove(key);
        EXPECT_FALSE(client->stat(key)) << key;
    }
}

TEST_P(CloudClientConformance, CopiesPartsOfEveryKey) {
    for (const auto& key : awkwardKeys) {
        put(key, "content of " + key);
        const auto id = client->startMultipartUpload(key, "");
        PartInfo copied{0, 0, 7, ""};
        if (serverHas(Quirk::DecodesCopySourcesTwice) && key.find('%') != std::string::npos) {
            expectFailure<ResourceNotFoundException>(u"no_such_key",
                                                     [&] { client->reusePart(key, id, copied); });
            client->abortMultipartUpload(key, id);
            continue;
        }
        copied.Tag = client->reusePart(key, id, copied);
        client->completeMultipartUpload(key, id, {copied});
        EXPECT_EQ(get(key), "content") << key;
    }
}

TEST_P(CloudClientConformance, ListsFoldersByTheDelimiter) {
    for (const char* key : {"a/1", "a/2", "a/b/3", "top", "z/4"})
        put(key, "x");
    EXPECT_THAT(names("", {"/", 0}), ElementsAre("top", "a/", "z/"));
    EXPECT_THAT(names("a/", {"/", 0}), ElementsAre("a/1", "a/2", "a/b/"));
    EXPECT_THAT(names("a/", {"", 0}), ElementsAre("a/1", "a/2", "a/b/3"));
    EXPECT_THAT(names("nothing/", {"/", 0}), IsEmpty());
}

TEST_P(CloudClientConformance, ListsPageByPage) {
    std::vector<std::string> expected;
    for (int i = 10; i < 35; ++i) {
        expected.push_back("page/" + std::to_string(i) + " +%");
        put(expected.back(), "x");
    }
    EXPECT_EQ(names("page/", {"", 10}), expected);
    std::string token;
    EXPECT_EQ(client->list("page/", token, {"", 10}).size(), 10u);
    EXPECT_FALSE(token.empty());
}

TEST_P(CloudClientConformance, RemovesWhatIsThereAndWhatIsNot) {
    put("object", "x");
    EXPECT_TRUE(client->stat("object"));
    EXPECT_NO_THROW(client->remove("object"));
    EXPECT_NO_THROW(client->remove("object"));
    EXPECT_FALSE(client->stat("object"));
}

TEST_P(CloudClientConformance, AssemblesPartsInTheOrderOfTheirNumbers) {
    const auto content = contentOf(partSize + 1000);
    const auto id = client->startMultipartUpload("object", "");
    const auto second = part("object", id, 1, content.substr(partSize));
    const auto first = part("object", id, 0, content.substr(0, partSize));
    client->completeMultipartUpload("object", id, {first, second});
    expectContent("object", content);
}

TEST_P(CloudClientConformance, RewritesOnePartAndReusesTheOthers) {
    auto content = contentOf(2 * partSize + 500);
    put("object", content);
    auto parts = client->listParts("object");
    ASSERT_EQ(parts.size(), 3u);
    const auto id = client->startMultipartUpload("object", "");
    parts[0].Tag = client->reusePart("object", id, parts[0]);
    parts[1] = part("object", id, 1, std::string(partSize, 'n'));
    parts[2].Tag = client->reusePart("object", id, parts[2]);
    client->completeMultipartUpload("object", id, parts);
    content.replace(partSize, partSize, std::string(partSize, 'n'));
    expectContent("object", content);
}

TEST_P(CloudClientConformance, KeepsTheObjectWhenAnUploadIsAborted) {
    put("object", "before");
    const auto id = client->startMultipartUpload("object", "");
    const auto first = part("object", id, 0, "never seen");
    client->abortMultipartUpload("object", id);
    EXPECT_EQ(get("object"), "before");
    EXPECT_THROW(client->completeMultipartUpload("object", id, {first}), CloudException);
}

TEST_P(CloudClientConformance, RaisesWhatS3SaysOfBadCompletions) {
    put("object", "before");
    const auto id = client->startMultipartUpload("object", "");
    const auto only = part("object", id, 0, "after");
    const auto complete = [&](const std::vector<PartInfo>& parts) {
        client->completeMultipartUpload("object", id, parts);
    };
    expectUnexplainedFailure([&] { complete({}); });
    expectUnexplainedFailure([&] { complete({{0, 0, 0, "\"wrong\""}}); });
    expectUnexplainedFailure([&] { complete({{1, 0, 0, only.Tag}}); });
    EXPECT_EQ(get("object"), "before");
    complete({only});
    EXPECT_EQ(get("object"), "after");
}

TEST_P(CloudClientConformance, RaisesWhatS3SaysOfPartsOutOfOrder) {
    put("object", "before");
    const auto id = client->startMultipartUpload("object", "");
    const auto first = part("object", id, 0, contentOf(partSize));
    const auto second = part("object", id, 1, "end");
    const auto completeOutOfOrder = [&] { client->completeMultipartUpload("object", id, {second, first}); };
    if (serverHas(Quirk::SortsPartsOfCompletions)) {
        completeOutOfOrder();
    } else {
        expectUnexplainedFailure(completeOutOfOrder);
        EXPECT_EQ(get("object"), "before");
        client->completeMultipartUpload("object", id, {first, second});
    }
    expectContent("object", contentOf(partSize) + "end");
}

TEST_P(CloudClientConformance, NamesAMissingBucket) {
    client = target->clientOf(target->access().bucket + "-missing");
    std::string token;
    EXPECT_FALSE(client->stat("k"));
    expectFailure<ResourceNotFoundException>(u"no_such_bucket", [&] { client->list("", token, {"", 0}); });
    expectFailure<ResourceNotFoundException>(u"no_such_bucket", [&] { put("k", "x"); });
    expectFailure<InvalidLocationException>(u"invalid_bucket", [&] { client->checkRootValidity("/"); });
}

TEST_P(CloudClientConformance, FindsItsBucketValid) {
    EXPECT_NO_THROW(client->checkRootValidity("/"));
}

TEST_P(CloudClientConformance, RefusesWrongKeys) {
    const auto listWith = [this](const Keys& keys) {
        auto access = target->access();
        access.keys = keys;
        std::string token;
        cloudClient(access)->list("", token, {"", 0});
    };
    auto wrongSecret = target->access().keys;
    wrongSecret.secret = "wrong";
    expectFailure<PermissionDeniedException>(u"signature_does_not_match", [&] { listWith(wrongSecret); });
    expectFailure<PermissionDeniedException>(u"invalid_access_key_id", [&] {
        listWith({"unknown", "wrong", ""});
    });
    expectFailure<PermissionDeniedException>(u"access_denied", [&] { listWith({"", "", ""}); });
}

TEST_P(CloudClientConformance, ServesManyThreadsAtOnce) {
    const auto content = contentOf(300000);
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t) {
        threads.emplace_back([&, key = "thread/" + std::to_string(t)] {
            for (int i = 0; i < 3; ++i) {
                put(key, content);
                expectContent(key, content);
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_EQ(names("thread/", {"", 0}).size(), 8u);
}
