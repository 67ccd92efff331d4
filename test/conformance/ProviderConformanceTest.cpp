#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <storage/cloudprovider/buildCloudProvider.hpp>

#include "conformance/targets/EmbeddedTarget.hpp"
#include "support/plugin/CloudFailure.hpp"
#include "support/plugin/ProviderFiles.hpp"

using namespace testsupport;
using foundation::storage::provider::Entry;
using foundation::storage::provider::EntryKind;
using storage::cloudprovider::FolderPolicy;
using testing::Contains;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace {

std::string contentOf(std::size_t size) {
    std::string content(size, '\0');
    for (std::size_t i = 0; i < size; ++i)
        content[i] = static_cast<char>((i * 7 + i / 251) % 256);
    return content;
}

// Names that encodings trip over.
const std::u16string awkwardNames[] = {
    u"with blank",     u"plus+plus",      u"100%",
    u"a%2Bb",          u"amp&and=eq?x#y", u"quote'\"<tag>",
    u"back\\slash|{}", u"\u00FCber",      u"\u20AC\U0001F4E6",
};

}  // namespace

class ProviderConformance : public testing::TestWithParam<Way> {
protected:
    std::vector<std::u16string> namesIn(const std::u16string& folder) {
        std::vector<std::u16string> names;
        for (const Entry& entry : provider->list(folder))
            names.push_back(entry.name + (entry.kind == EntryKind::Folder ? u"/" : u""));
        return names;
    }

    EmbeddedTarget target{GetParam()};
    std::shared_ptr<IProvider> provider =
        storage::cloudprovider::buildCloudProvider(target.client(), FolderPolicy::Implicit, true);
};

INSTANTIATE_TEST_SUITE_P(Embedded, ProviderConformance,
                         testing::Values(Way::HttpPath, Way::HttpVirtualHost, Way::HttpsPath),
                         [](const auto& way) { return nameOf(way.param); });

TEST_P(ProviderConformance, GivesBackWhatWasWritten) {
    for (const std::size_t size : {0U, 1U, 2U, 1000U, 9U << 20U}) {
        const std::string content = contentOf(size);
        put(*provider, u"/folder/file", content);
        EXPECT_TRUE(get(*provider, u"/folder/file") == content) << size;
        EXPECT_EQ(provider->stat(u"/folder/file")->size, size);
    }
}

TEST_P(ProviderConformance, ReadsFromTheMiddle) {
    const std::string content = contentOf(5000);
    put(*provider, u"/file", content);
    EXPECT_EQ(get(*provider, u"/file", 4999), content.substr(4999));
    EXPECT_EQ(get(*provider, u"/file", 2500), content.substr(2500));
    char byte = '?';
    EXPECT_EQ(provider->openRead(u"/file")->read(0, &byte, 1), 1U);
    EXPECT_EQ(byte, content[0]);
}

TEST_P(ProviderConformance, ListsFilesAndFolders) {
    put(*provider, u"/a", "1");
    put(*provider, u"/b/c", "2");
    put(*provider, u"/b/d/e", "3");
    EXPECT_THAT(namesIn(u"/"), UnorderedElementsAre(u"a", u"b/"));
    EXPECT_THAT(namesIn(u"/b"), UnorderedElementsAre(u"c", u"d/"));
    EXPECT_EQ(provider->stat(u"/b")->kind, EntryKind::Folder);
    EXPECT_EQ(provider->stat(u"/b/c")->kind, EntryKind::File);
    EXPECT_FALSE(provider->stat(u"/b/x"));
}

TEST_P(ProviderConformance, ListsMoreThanAPage) {
    for (int i = 0; i < 1005; ++i)
        target.server().putObject(EmbeddedTarget::bucketName, "many/" + std::to_string(i), "");
    EXPECT_EQ(namesIn(u"/many").size(), 1005U);
}

TEST_P(ProviderConformance, TakesAnyName) {
    for (const std::u16string& name : awkwardNames) {
        put(*provider, u"/names/" + name, "content");
        EXPECT_EQ(get(*provider, u"/names/" + name), "content");
        EXPECT_THAT(namesIn(u"/names"), Contains(name));
        provider->remove(u"/names/" + name);
    }
    EXPECT_THAT(namesIn(u"/names"), IsEmpty());
    EXPECT_FALSE(provider->stat(u"/names"));
}

TEST_P(ProviderConformance, TellsThatTheBucketCannotBeUsed) {
    provider =
        storage::cloudprovider::buildCloudProvider(target.clientOf("missing"), FolderPolicy::Implicit, true);
    expectFailure<storage::cloudprovider::InvalidLocationException>(u"invalid_bucket",
                                                                    [&] { provider->stat(u"/"); });
    EXPECT_THROW(provider->list(u"/"), storage::cloudprovider::ResourceNotFoundException);
}
