#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/date_time/posix_time/posix_time.hpp>
#include <filesystem>
#include <fl/i18n.hpp>
#include <stdexcept>
#include <storage/cloudprovider/buildCloudProvider.hpp>
#include <string>
#include <thread>
#include <vector>

#include "MemoryClient.hpp"
#include "support/plugin/CloudFailure.hpp"
#include "support/plugin/HostileTexts.hpp"
#include "support/plugin/ProviderFiles.hpp"
#include "support/process/Environment.hpp"
#include "support/process/TemporaryFolder.hpp"

namespace {

using namespace testsupport;
using namespace storage::cloudprovider;
using namespace foundation::storage::provider;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Lt;
using testing::SizeIs;
using testing::ThrowsMessage;
using testing::UnorderedElementsAre;

class CloudProviderTest : public testing::Test {
protected:
    /// Each child as `file name size` or `folder name`.
    std::vector<std::string> childrenOf(const std::u16string& folder) {
        std::vector<std::string> children;
        for (const Entry& entry : provider->list(folder))
            children.push_back(describe(entry));
        return children;
    }

    std::string statOf(const std::u16string& path) {
        const auto entry = provider->stat(path);
        return entry ? describe(*entry) : "none";
    }

    static std::string describe(const Entry& entry) {
        const std::string name = fl::i18n::to_string(entry.name);
        if (entry.kind == EntryKind::Folder) return "folder " + name;
        return "file " + name + " " + std::to_string(entry.size);
    }

    std::string read(const std::u16string& path, std::uint64_t offset, std::size_t count) {
        std::string bytes(count, '?');
        bytes.resize(provider->openRead(path)->read(offset, bytes.data(), count));
        return bytes;
    }

    std::shared_ptr<MemoryClient> bucket = std::make_shared<MemoryClient>();
    std::shared_ptr<IProvider> provider = buildCloudProvider(bucket, FolderPolicy::Implicit, true);
};

using CloudProviderStat = CloudProviderTest;

TEST_F(CloudProviderStat, FindsFilesByTheirKey) {
    bucket->objects = {{"a/b", "12345"}};
    EXPECT_EQ(statOf(u"/a/b"), "file b 5");
    EXPECT_EQ(statOf(u"a/b"), "file b 5");
    EXPECT_THAT(bucket->calls, ElementsAre("stat a/b", "stat a/b"));
}

TEST_F(CloudProviderStat, GivesTheTimeOfAFileAndNoneOfAFolder) {
    bucket->objects = {{"a/b", ""}};
    EXPECT_EQ(provider->stat(u"/a/b")->lastModified, utils::long2Ptime(MemoryClient::modified));
    EXPECT_TRUE(provider->stat(u"/a")->lastModified.is_not_a_date_time());
}

TEST_F(CloudProviderStat, FindsFoldersAboveAKey) {
    bucket->objects = {{"a/b/c", ""}};
    EXPECT_EQ(statOf(u"/a"), "folder a");
    EXPECT_EQ(statOf(u"/a/b"), "folder b");
    EXPECT_EQ(statOf(u"/a/b/"), "folder b");
}

TEST_F(CloudProviderStat, FindsFoldersByTheirMarker) {
    bucket->objects = {{"a/", ""}};
    EXPECT_EQ(statOf(u"/a"), "folder a");
    EXPECT_EQ(statOf(u"/a/"), "folder a");
}

TEST_F(CloudProviderStat, FindsNothingElse) {
    bucket->objects = {{"ab", ""}, {"b/c", ""}};
    for (const std::u16string path : {u"/a", u"/ab/", u"/b/", u"/b/c/d", u"/b//", u"//ab"})
        EXPECT_EQ(statOf(path), path == u"/b/" ? "folder b" : "none") << fl::i18n::to_string(path);
}

TEST_F(CloudProviderStat, TellsAFileFromAFolderOfItsNameByTheSlash) {
    bucket->objects = {{"a", "1"}, {"a/b", ""}};
    EXPECT_EQ(statOf(u"/a"), "file a 1");
    EXPECT_EQ(statOf(u"/a/"), "folder a");
}

TEST_F(CloudProviderStat, LooksBeyondEmptyPages) {
    bucket->objects = {{"a/b", ""}};
    bucket->emptyPageFirst = true;
    EXPECT_EQ(statOf(u"/a"), "folder a");
    EXPECT_EQ(statOf(u"/b"), "none");
}

TEST_F(CloudProviderStat, OfTheRootChecksTheBucket) {
    EXPECT_EQ(statOf(u"/"), "folder ");
    EXPECT_EQ(statOf(u""), "folder ");
    EXPECT_THAT(bucket->calls, ElementsAre("checkRootValidity", "checkRootValidity"));
    bucket->rootIsValid = false;
    EXPECT_THROW(provider->stat(u"/"), InvalidLocationException);
}

TEST_F(CloudProviderStat, OfTheRootAsksNothingWithoutTheCheck) {
    provider = buildCloudProvider(bucket, FolderPolicy::Implicit, false);
    EXPECT_EQ(statOf(u"/"), "folder ");
    EXPECT_THAT(bucket->calls, IsEmpty());
}

using CloudProviderList = CloudProviderTest;

TEST_F(CloudProviderList, GivesTheDirectChildren) {
    bucket->objects = {{"a", "1"}, {"b/c", "22"}, {"b/d/e", ""}, {"b/d/f", ""}, {"bb/c", ""}};
    EXPECT_THAT(childrenOf(u"/"), UnorderedElementsAre("file a 1", "folder b", "folder bb"));
    EXPECT_THAT(childrenOf(u""), UnorderedElementsAre("file a 1", "folder b", "folder bb"));
    EXPECT_THAT(childrenOf(u"/b"), UnorderedElementsAre("file c 2", "folder d"));
    EXPECT_THAT(childrenOf(u"/b/"), UnorderedElementsAre("file c 2", "folder d"));
    EXPECT_THAT(childrenOf(u"/b/d"), UnorderedElementsAre("file e 0", "file f 0"));
}

TEST_F(CloudProviderList, LeavesOutTheFoldersOwnMarker) {
    bucket->objects = {{"a/", ""}, {"a/b/", ""}};
    EXPECT_THAT(childrenOf(u"/"), ElementsAre("folder a"));
    EXPECT_THAT(childrenOf(u"/a"), ElementsAre("folder b"));
    EXPECT_THAT(childrenOf(u"/a/b"), IsEmpty());
}

TEST_F(CloudProviderList, HasNothingInAFolderThatIsNotThere) {
    bucket->objects = {{"a", ""}};
    EXPECT_THAT(childrenOf(u"/a"), IsEmpty());
    EXPECT_THAT(childrenOf(u"/b"), IsEmpty());
}

TEST_F(CloudProviderList, ReadsAllPages) {
    for (int i = 0; i < 25; ++i)
        bucket->objects["f/" + std::to_string(i)] = "x";
    bucket->pageSize = 10;
    EXPECT_EQ(childrenOf(u"/f").size(), 25U);
    EXPECT_EQ(bucket->calls.size(), 3U);
    bucket->emptyPageFirst = true;
    EXPECT_EQ(childrenOf(u"/f").size(), 25U);
}

TEST_F(CloudProviderList, KeepsEmptyNamesReachable) {
    bucket->objects = {{"a//b", "1"}, {"/c", "22"}};
    EXPECT_THAT(childrenOf(u"/a"), ElementsAre("folder "));
    EXPECT_THAT(childrenOf(u"/a//"), ElementsAre("file b 1"));
    EXPECT_EQ(statOf(u"/a//b"), "file b 1");
    EXPECT_THAT(childrenOf(u"/"), UnorderedElementsAre("folder ", "folder a"));
    EXPECT_THAT(childrenOf(u"//"), ElementsAre("file c 2"));
    EXPECT_EQ(statOf(u"//c"), "file c 2");
}

TEST_F(CloudProviderList, GivesNamesInUtf16) {
    bucket->objects = {{"\u00FC/\U0001F600", "1"}};
    EXPECT_EQ(provider->list(u"/").at(0).name, u"\u00FC");
    EXPECT_EQ(provider->list(u"/\u00FC").at(0).name, u"\U0001F600");
}

using CloudProviderRead = CloudProviderTest;

TEST_F(CloudProviderRead, GivesTheBytesAskedFor) {
    bucket->objects = {{"f", "0123456789"}};
    EXPECT_EQ(provider->openRead(u"/f")->size(), 10U);
    for (std::size_t offset = 0; offset <= 11; ++offset)
        for (std::size_t count = 0; count <= 12; ++count)
            EXPECT_EQ(read(u"/f", offset, count),
                      offset > 10 ? "" : std::string("0123456789").substr(offset, count))
                << offset << " " << count;
}

TEST_F(CloudProviderRead, AsksForNoMoreThanItNeeds) {
    bucket->objects = {{"f", "0123456789"}};
    const auto reader = provider->openRead(u"/f");
    bucket->calls.clear();
    char buffer[20];
    reader->read(2, buffer, 3);
    reader->read(8, buffer, 20);
    EXPECT_THAT(bucket->calls, ElementsAre("download f 2-4", "download f 8-9"));
}

TEST_F(CloudProviderRead, AsksForASingleByteWithANeighbour) {
    bucket->objects = {{"f", "0123456789"}, {"one", "x"}};
    EXPECT_EQ(read(u"/f", 0, 1), "0");
    EXPECT_EQ(read(u"/f", 5, 1), "5");
    EXPECT_EQ(read(u"/f", 9, 1), "9");
    EXPECT_EQ(read(u"/one", 0, 1), "x");
    EXPECT_THAT(bucket->calls, ElementsAre("stat f", "download f 0-1", "stat f", "download f 4-5", "stat f",
                                           "download f 8-9", "stat one", "download one 0-0"));
}

TEST_F(CloudProviderRead, AsksForNothingOfAnEmptyFile) {
    bucket->objects = {{"f", ""}};
    EXPECT_EQ(read(u"/f", 0, 10), "");
    EXPECT_THAT(bucket->calls, ElementsAre("stat f"));
}

TEST_F(CloudProviderRead, DividesLargeReads) {
    std::string content(17U << 20U, '\0');
    for (std::size_t i = 0; i < content.size(); ++i)
        content[i] = static_cast<char>(i * 7 + i / 251);
    bucket->objects = {{"f", content}};
    EXPECT_TRUE(read(u"/f", 0, content.size() + 1) == content);
    EXPECT_THAT(bucket->calls, ElementsAre("stat f", "download f 0-8388607", "download f 8388608-16777215",
                                           "download f 16777216-17825791"));
    bucket->calls.clear();
    EXPECT_TRUE(read(u"/f", 3, (8U << 20U) + 1) == content.substr(3, (8U << 20U) + 1));
    EXPECT_THAT(bucket->calls, ElementsAre("stat f", "download f 3-8388610", "download f 8388610-8388611"));
}

TEST_F(CloudProviderRead, RefusesAnAnswerOfAnotherLength) {
    bucket->objects = {{"f", "0123456789"}};
    for (const long long surplus : {-1, 1, 100, -4}) {
        bucket->downloadSurplus = surplus;
        expectFailure<UnknownErrorException>(u"unexpected_length", [&] { read(u"/f", 2, 4); });
        expectFailure<UnknownErrorException>(u"unexpected_length", [&] { read(u"/f", 0, 10); });
    }
}

TEST_F(CloudProviderRead, WritesOnlyWhereItWasToldTo) {
    bucket->objects = {{"f", "0123456789"}};
    bucket->downloadSurplus = 3;
    std::string memory = "..............";
    EXPECT_THROW(provider->openRead(u"/f")->read(4, memory.data() + 5, 4), UnknownErrorException);
    EXPECT_EQ(memory, ".....4567.....");
    EXPECT_THROW(provider->openRead(u"/f")->read(4, memory.data() + 1, 1), UnknownErrorException);
    EXPECT_EQ(memory, ".4...4567.....");
}

TEST_F(CloudProviderRead, RefusesAFileThatIsNotThere) {
    bucket->objects = {{"a/b", ""}};
    for (const std::u16string path : {u"/f", u"/a"})
        expectFailure<ResourceNotFoundException>(u"no_such_key", [&] { provider->openRead(path); });
}

TEST_F(CloudProviderRead, MayGoOnOnManyThreads) {
    bucket->objects = {{"f", "0123456789"}};
    const auto reader = provider->openRead(u"/f");
    std::vector<std::thread> threads;
    for (std::size_t offset = 0; offset < 8; ++offset)
        threads.emplace_back([&reader, offset] {
            for (int i = 0; i < 100; ++i) {
                std::string bytes(2, '?');
                reader->read(offset, bytes.data(), 2);
                EXPECT_EQ(bytes, std::string("0123456789").substr(offset, 2));
            }
        });
    for (auto& thread : threads)
        thread.join();
}

TEST_F(CloudProviderRead, GoesOnWithoutTheProvider) {
    bucket->objects = {{"f", "0123456789"}};
    const auto reader = provider->openRead(u"/f");
    provider.reset();
    char byte = '?';
    EXPECT_EQ(reader->read(3, &byte, 1), 1U);
    EXPECT_EQ(byte, '3');
}

using CloudProviderWrite = CloudProviderTest;

TEST_F(CloudProviderWrite, StoresTheWholeFileAtItsCommit) {
    bucket->objects = {{"a/f", "old"}};
    const auto writer = provider->openWrite(u"/a/f");
    writer->write("one,", 4);
    writer->write("", 0);
    writer->write("two\0\n", 5);
    EXPECT_EQ(bucket->objects["a/f"], "old");
    writer->commit();
    EXPECT_EQ(bucket->objects["a/f"], std::string("one,two\0\n", 9));
    EXPECT_THAT(bucket->calls, ElementsAre("upload a/f 9"));
}

TEST_F(CloudProviderWrite, StoresEmptyFiles) {
    provider->openWrite(u"/f")->commit();
    EXPECT_THAT(bucket->calls, ElementsAre("upload f 0"));
    EXPECT_EQ(bucket->objects.at("f"), "");
}

TEST_F(CloudProviderWrite, StoresNothingWithoutACommit) {
    provider->openWrite(u"/f")->write("text", 4);
    EXPECT_THAT(bucket->calls, IsEmpty());
}

TEST_F(CloudProviderWrite, EndsWithItsCommit) {
    const auto writer = provider->openWrite(u"/f");
    writer->commit();
    EXPECT_THROW(writer->write("x", 1), std::logic_error);
    EXPECT_THROW(writer->commit(), std::logic_error);
    EXPECT_EQ(bucket->calls.size(), 1U);
}

TEST_F(CloudProviderWrite, LeavesNoTemporaryFileBehind) {
    const TemporaryFolder folder;
    const Environment environment{{"TMPDIR", folder.path().string()}};
    const auto writer = provider->openWrite(u"/f");
    writer->write("text", 4);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
    writer->commit();
    EXPECT_EQ(bucket->objects.at("f"), "text");
    EXPECT_TRUE(std::filesystem::is_empty(folder.path()));
}

TEST_F(CloudProviderWrite, GoesThroughTheUsualFolderWhereNoneIsNamed) {
    const Environment environment{{"TMPDIR", ""}};
    provider->openWrite(u"/f")->commit();
    EXPECT_THAT(bucket->calls, ElementsAre("upload f 0"));
}

TEST_F(CloudProviderWrite, BlamesTheVariableThatNamesNoFolder) {
    for (const std::string& text : hostileTexts()) {
        SCOPED_TRACE(shown(text));
        const Environment environment{{"TMPDIR", "/nowhere/" + text}};
        EXPECT_THAT([&] { provider->openWrite(u"/f"); },
                    ThrowsMessage<std::system_error>(AllOf(HasSubstr("TMPDIR"), SizeIs(Lt(200U)))));
    }
}

TEST_F(CloudProviderTest, RemovesFiles) {
    bucket->objects = {{"a/b", ""}};
    provider->remove(u"/a/b");
    provider->remove(u"/a/b");
    EXPECT_THAT(bucket->calls, ElementsAre("remove a/b", "remove a/b"));
    EXPECT_THAT(bucket->objects, IsEmpty());
}

TEST_F(CloudProviderTest, TakesNoFolderForAFile) {
    bucket->objects = {{"a/", ""}};
    for (const std::u16string path : {u"", u"/", u"/a/", u"//"}) {
        EXPECT_THROW(provider->openRead(path), std::invalid_argument);
        EXPECT_THROW(provider->openWrite(path), std::invalid_argument);
        EXPECT_THROW(provider->remove(path), std::invalid_argument);
    }
    EXPECT_THAT(bucket->calls, IsEmpty());
}

TEST_F(CloudProviderTest, TakesNoPathThatIsNotUtf16) {
    const std::u16string path = {u'/', char16_t(0xD800)};
    EXPECT_THROW(provider->stat(path), std::invalid_argument);
    EXPECT_THROW(provider->list(path), std::invalid_argument);
    EXPECT_THROW(provider->openRead(path), std::invalid_argument);
}

TEST_F(CloudProviderTest, UsesPathsAsTheyStand) {
    put(*provider, u"/a/../%41 b/.", "x");
    EXPECT_THAT(bucket->calls, ElementsAre("upload a/../%41 b/. 1"));
    EXPECT_EQ(statOf(u"/a/../%41 b/."), "file . 1");
}

TEST(BuildCloudProvider, NeedsAClientAndAKnownPolicy) {
    EXPECT_THROW(buildCloudProvider(nullptr, FolderPolicy::Implicit, true), std::invalid_argument);
    EXPECT_THROW(buildCloudProvider(std::make_shared<MemoryClient>(), FolderPolicy(9), true),
                 std::invalid_argument);
}

TEST(BuildCloudProvider, AsksTheClientNothing) {
    const auto client = std::make_shared<MemoryClient>();
    EXPECT_NE(buildCloudProvider(client, FolderPolicy::Implicit, true), nullptr);
    EXPECT_THAT(client->calls, IsEmpty());
}

}  // namespace
