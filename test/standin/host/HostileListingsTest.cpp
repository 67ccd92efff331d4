#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <storage/cloudprovider/buildCloudProvider.hpp>

#include "MemoryClient.hpp"
#include "support/plugin/CloudFailure.hpp"

namespace {

using namespace testsupport;
using namespace storage::cloudprovider;
using testing::ElementsAre;
using testing::ThrowsMessage;

/// Answers of a server that is broken, or means ill.
class HostileListings : public testing::Test {
protected:
    std::shared_ptr<MemoryClient> bucket = std::make_shared<MemoryClient>();
    std::shared_ptr<foundation::storage::provider::IProvider> provider =
        buildCloudProvider(bucket, FolderPolicy::Implicit, true);
};

TEST_F(HostileListings, MakeNoChildOfWhatIsElsewhere) {
    for (const std::string name :
         {"", "/", "a", "ab", "ab/", "zz/", "b/a/c", "A/b", "a/b/c", "a/b//", "a//b"}) {
        bucket->listed = {{"a/good", name}};
        SCOPED_TRACE(name);
        expectFailure<UnknownErrorException>(u"unexpected_entry", [&] { provider->list(u"/a"); });
    }
}

TEST_F(HostileListings, MakeNoChildOfTheRootOutOfAFolderBelow) {
    for (const std::string name : {"a/b", "a//", "//"}) {
        bucket->listed = {{name}};
        SCOPED_TRACE(name);
        expectFailure<UnknownErrorException>(u"unexpected_entry", [&] { provider->list(u"/"); });
    }
}

TEST_F(HostileListings, MakeNoFolderOfWhatIsElsewhere) {
    for (const std::string name : {"", "a", "ab/c", "zz/"}) {
        bucket->listed = {{name}};
        SCOPED_TRACE(name);
        expectFailure<UnknownErrorException>(u"unexpected_entry", [&] { provider->stat(u"/a/"); });
    }
}

TEST_F(HostileListings, EndWhenTheNextPageIsTheSame) {
    bucket->objects = {{"a/b", ""}};
    bucket->lastToken = "a/c";
    expectFailure<UnknownErrorException>(u"unexpected_token", [&] { provider->list(u"/a"); });
    EXPECT_THAT(bucket->calls, ElementsAre("list a/", "list a/"));
    expectFailure<UnknownErrorException>(u"unexpected_token", [&] { provider->stat(u"/b/"); });
}

TEST_F(HostileListings, NameTheKeyThatNoPathLeadsTo) {
    bucket->objects = {{"file/b", "1"}, {"file/\x1b\xFF", "2"}, {"folder/\xC3/c", "3"}};
    EXPECT_THAT(
        ([&] { provider->list(u"/file"); }),
        ThrowsMessage<std::runtime_error>("no path leads to the key file/\\x1B\\xFF, which isn't UTF-8"));
    EXPECT_THAT(
        ([&] { provider->list(u"/folder"); }),
        ThrowsMessage<std::runtime_error>("no path leads to the key folder/\\xC3/, which isn't UTF-8"));
}

TEST_F(HostileListings, ThatFailSpareTheFoldersAround) {
    bucket->objects = {{"a/b", "1"}, {"a/c/\xFF", "2"}};
    EXPECT_EQ(provider->list(u"/a").size(), 2U);
    EXPECT_TRUE(provider->stat(u"/a/c"));
}

}  // namespace
