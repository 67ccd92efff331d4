#include "operations/Listing.hpp"

#include <gmock/gmock.h>

#include "Refusal.hpp"

namespace s3server::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Objects objectsNamed(const std::vector<std::string>& keys) {
    Objects objects;
    for (const std::string& key : keys)
        objects[key] = std::make_shared<const Object>();
    return objects;
}

std::vector<std::string> keysOf(const ListingPage& page) {
    std::vector<std::string> keys;
    for (const auto& [key, object] : page.contents)
        keys.push_back(key);
    return keys;
}

/// Keys and common prefixes of all pages, as if in one.
std::vector<std::string> allPages(const Objects& objects, ListingQuery query) {
    std::vector<std::string> names;
    for (;;) {
        const ListingPage page = listPage(objects, query);
        for (const std::string& key : keysOf(page))
            names.push_back(key);
        for (const std::string& prefix : page.commonPrefixes)
            names.push_back(prefix);
        if (!page.truncated) return names;
        query.after = parseContinuationToken(continuationToken(page.next));
    }
}

TEST(Listing, IsInTheOrderOfTheBytes) {
    const Objects objects = objectsNamed({"\xc3\xa9", "b", "a", "B", "\xf0\x9f\x98\x80", "\xef\xbf\xbd"});
    EXPECT_THAT(keysOf(listPage(objects, {})),
                ElementsAre("B", "a", "b", "\xc3\xa9", "\xef\xbf\xbd", "\xf0\x9f\x98\x80"));
}

TEST(Listing, HasTheKeysWithThePrefix) {
    const Objects objects = objectsNamed({"a", "ab", "ab/c", "b", "\xff"});
    EXPECT_THAT(keysOf(listPage(objects, {"ab", "", {}, 1000})), ElementsAre("ab", "ab/c"));
    EXPECT_THAT(keysOf(listPage(objects, {"c", "", {}, 1000})), IsEmpty());
    EXPECT_THAT(keysOf(listPage(objects, {"\xff", "", {}, 1000})), ElementsAre("\xff"));
}

TEST(Listing, RollsUpWhatGoesOnToTheDelimiter) {
    const ListingPage page =
        listPage(objectsNamed({"d", "d/", "d/a", "d/b/c", "d/b/d", "e"}), {"d/", "/", {}, 1000});
    EXPECT_THAT(keysOf(page), ElementsAre("d/", "d/a"));
    EXPECT_THAT(page.commonPrefixes, ElementsAre("d/b/"));
}

TEST(Listing, TakesADelimiterOfManyCharacters) {
    const ListingPage page = listPage(objectsNamed({"a::b", "a::c", "a:d"}), {"", "::", {}, 1000});
    EXPECT_THAT(keysOf(page), ElementsAre("a:d"));
    EXPECT_THAT(page.commonPrefixes, ElementsAre("a::"));
}

TEST(Listing, SkipsACommonPrefixThatEndsInTheHighestByte) {
    const ListingPage page = listPage(objectsNamed({"a\xff", "a\xff\xff", "b"}), {"", "\xff", {}, 1000});
    EXPECT_THAT(keysOf(page), ElementsAre("b"));
    EXPECT_THAT(page.commonPrefixes, ElementsAre("a\xff"));
}

TEST(Listing, StartsBehindAKey) {
    const Objects objects = objectsNamed({"a", "b", "c"});
    EXPECT_THAT(keysOf(listPage(objects, {"", "", {"b", false}, 1000})), ElementsAre("c"));
    EXPECT_THAT(keysOf(listPage(objects, {"b", "", {"a", false}, 1000})), ElementsAre("b"));
}

TEST(Listing, IsTheSameInPagesOfAnySize) {
    const Objects objects = objectsNamed({"a", "b/1", "b/2", "b0", "c/1", "c/2/3", "d"});
    for (std::size_t size = 1; size <= 7; ++size)
        EXPECT_THAT(allPages(objects, {"", "/", {}, size}),
                    testing::UnorderedElementsAre("a", "b/", "b0", "c/", "d"));
}

TEST(Listing, IsNotTruncatedWhenTheLastKeyFillsThePage) {
    EXPECT_TRUE(listPage(objectsNamed({"a", "b", "c"}), {"", "", {}, 2}).truncated);
    EXPECT_FALSE(listPage(objectsNamed({"a", "b"}), {"", "", {}, 2}).truncated);
    EXPECT_FALSE(listPage(objectsNamed({"a/1", "a/2"}), {"", "/", {}, 1}).truncated);
}

TEST(Listing, OfNoKeysIsEmptyAndNotTruncated) {
    const ListingPage page = listPage(objectsNamed({"a"}), {"", "", {}, 0});
    EXPECT_EQ(page.size(), 0u);
    EXPECT_FALSE(page.truncated);
}

TEST(ContinuationToken, ThatIsNoneIsRefused) {
    for (const char* const token : {"", "abc", "eA==", "k", "aw=="})
        EXPECT_EQ(codeOf([token] { parseContinuationToken(token); }), "InvalidArgument") << token;
}

}  // namespace
}  // namespace s3server::test
