#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fl/i18n.hpp>
#include <storage/cloudprovider/buildCloudProvider.hpp>

#include "MemoryClient.hpp"
#include "support/CloudFailure.hpp"

namespace {

using namespace testsupport;
using namespace storage::cloudprovider;
using foundation::storage::provider::Entry;
using testing::ElementsAre;
using testing::IsEmpty;

/// Answers of a server that is broken, or means ill.
class HostileListings : public testing::Test {
protected:
    std::vector<std::string> childrenOf(const std::u16string& folder) {
        std::vector<std::string> names;
        for (const Entry& entry : provider->list(folder))
            names.push_back(fl::i18n::to_string(entry.name));
        return names;
    }

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

TEST_F(HostileListings, LeaveOutWhatNoPathLeadsTo) {
    bucket->objects = {{"a/\xFF", "1"}, {"a/b", "2"}, {"a/\xC3/c", "3"}, {"only/\x80", "4"}};
    EXPECT_THAT(childrenOf(u"/a"), ElementsAre("b"));
    EXPECT_THAT(childrenOf(u"/only"), IsEmpty());
    EXPECT_TRUE(provider->stat(u"/only"));
}

}  // namespace
