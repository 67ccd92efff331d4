#include <foundation/storage/provider/StorageIRI.hpp>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fl/i18n.hpp>
#include <ostream>
#include <stdexcept>
#include <string>

namespace {

using foundation::storage::provider::StorageIRI;
using testing::HasSubstr;
using testing::Not;
using testing::ThrowsMessage;

std::string utf8(const std::u16string& text) {
    return fl::i18n::to_string(text);
}

struct Parts {
    const char* name;
    std::u16string text;
    std::u16string host;
    std::u16string path;
    std::u16string shown;
};

const Parts parts[] = {
    {"Plain", u"s3://bucket/a/b", u"bucket", u"/a/b", u"s3://bucket/a/b"},
    {"WithoutPath", u"s3://bucket", u"bucket", u"", u"s3://bucket"},
    {"Root", u"s3://bucket/", u"bucket", u"/", u"s3://bucket/"},
    {"SchemeInCapitals", u"S3://Bucket/A", u"Bucket", u"/A", u"s3://Bucket/A"},
    {"Underscore", u"s3://My_Bucket.2/", u"My_Bucket.2", u"/", u"s3://My_Bucket.2/"},
    {"EncodedHost", u"s3://b%75cket/", u"bucket", u"/", u"s3://bucket/"},
    {"EncodedSlashInHost", u"s3://a%2Fb/", u"a/b", u"/", u"s3://a%2Fb/"},
    {"Unicode", u"s3://b\u00FCcket/\u65E5/\U0001F600", u"b\u00FCcket", u"/\u65E5/\U0001F600",
     u"s3://b\u00FCcket/\u65E5/\U0001F600"},
    {"EncodedUnicode", u"s3://b%c3%bccket/%F0%9F%98%80", u"b\u00FCcket", u"/\U0001F600",
     u"s3://b\u00FCcket/\U0001F600"},
    {"EncodedDirectionMark", u"s3://b/%E2%80%AEx", u"b", u"/\u202Ex", u"s3://b/%E2%80%AEx"},
    {"EncodedPrivateUse", u"s3://b/%EE%80%80", u"b", u"/\uE000", u"s3://b/%EE%80%80"},
    {"EncodedBlank", u"s3://b/a%20b+c", u"b", u"/a b+c", u"s3://b/a%20b+c"},
    {"EncodedPercent", u"s3://b/100%25", u"b", u"/100%", u"s3://b/100%25"},
    {"EncodedNul", u"s3://b/a%00b", u"b", std::u16string(u"/a\0b", 4), u"s3://b/a%00b"},
    {"EncodedWithoutNeed", u"s3://b/%7ea%2D", u"b", u"/~a-", u"s3://b/~a-"},
    {"UserAndPort", u"s3://user:pass@bucket:9000/a", u"bucket", u"/a", u"s3://user:pass@bucket:9000/a"},
    {"EmptyPort", u"s3://bucket:/a", u"bucket", u"/a", u"s3://bucket:/a"},
    {"Ipv4", u"s3://127.0.0.1:80/a", u"127.0.0.1", u"/a", u"s3://127.0.0.1:80/a"},
    {"Ipv6", u"s3://[::1]:80/a", u"[::1]", u"/a", u"s3://[::1]:80/a"},
    {"QueryAndFragment", u"s3://b/a?x=/../y#z", u"b", u"/a", u"s3://b/a?x=/../y#z"},
    {"DotSegments", u"s3://b/a/./b/../c", u"b", u"/a/c", u"s3://b/a/c"},
    {"EncodedDotSegments", u"s3://b/a/%2E%2e/c", u"b", u"/c", u"s3://b/c"},
    {"DotSegmentsAboveTheRoot", u"s3://b/../../a", u"b", u"/a", u"s3://b/a"},
    {"DotSegmentsAtTheEnd", u"s3://b/a/b/..", u"b", u"/a/", u"s3://b/a/"},
    {"EmptySegments", u"s3://b//a//../b/", u"b", u"//a/b/", u"s3://b//a/b/"},
    {"EmptyHost", u"s3:///a", u"", u"/a", u"s3:///a"},
    {"EmptyHostWithPort", u"s3://:80/a", u"", u"/a", u"s3://:80/a"},
    {"NoHost", u"s3:a/b", u"", u"a/b", u"s3:a/b"},
    {"RootedWithoutHost", u"s3:/a/b", u"", u"/a/b", u"s3:/a/b"},
    {"RootWithoutHost", u"s3:/", u"", u"/", u"s3:/"},
    {"TwoSlashesWithoutHost", u"s3:/a/..//b", u"", u"//b", u"s3:/.//b"},
    {"SchemeOnly", u"s3:", u"", u"", u"s3:"},
};

class StorageIRIParts : public testing::TestWithParam<Parts> {};

TEST_P(StorageIRIParts, AreDecodedAndTheWholeIsInNormalForm) {
    const StorageIRI iri(GetParam().text);
    EXPECT_EQ(utf8(iri.getHost()), utf8(GetParam().host));
    EXPECT_EQ(iri.hasHost(), !GetParam().host.empty());
    EXPECT_EQ(utf8(iri.getPath()), utf8(GetParam().path));
    EXPECT_EQ(utf8(iri.toString()), utf8(GetParam().shown));
}

TEST_P(StorageIRIParts, AreTheSameOfTheNormalForm) {
    const StorageIRI iri(GetParam().text);
    const StorageIRI again(iri.toString());
    EXPECT_EQ(again, iri);
    EXPECT_EQ(utf8(again.getPath()), utf8(iri.getPath()));
    EXPECT_EQ(utf8(again.toString()), utf8(iri.toString()));
}

INSTANTIATE_TEST_SUITE_P(StorageIRI, StorageIRIParts, testing::ValuesIn(parts),
                         [](const auto& example) { return example.param.name; });

struct Refused {
    const char* name;
    std::u16string text;
    const char* reason;
};

const Refused refused[] = {
    {"Empty", u"", "no scheme"},
    {"Relative", u"bucket/a", "no scheme"},
    {"NetworkPath", u"//bucket/a", "no scheme"},
    {"Blank", u"s3://secret/a b", "unexpected character at code unit 13"},
    {"BlankAfterAPair", u"s3://secret/\U0001F600 b", "unexpected character at code unit 14"},
    {"LineEnd", u"s3://secret/a\n", "unexpected character at code unit 13"},
    {"Nul", std::u16string(u"s3://secret/\0", 13), "unexpected character at code unit 12"},
    {"HalfEscape", u"s3://secret/%4", "unexpected character at code unit"},
    {"NoEscape", u"s3://secret/%zz", "unexpected character at code unit"},
    {"Backslash", u"s3://secret\\a", "unexpected character at code unit 11"},
    {"LetterInPort", u"s3://secret:8o/", "unexpected character at code unit"},
    {"DirectionMark", u"s3://secret/\u202E", "unexpected character at code unit 12"},
    {"PrivateUse", u"s3://secret/\uE000", "unexpected character at code unit 12"},
    {"NoCharacter", u"s3://secret/\U0001FFFE", "unexpected character at code unit 12"},
    {"LoneSurrogate", std::u16string(u"s3://secret/") + char16_t(0xD800), "lone surrogate at code unit 12"},
    {"NotUtf8", u"s3://secret/%FF", "percent-encoded bytes that aren't UTF-8"},
    {"NotUtf8InTheHost", u"s3://secret%C3/", "percent-encoded bytes that aren't UTF-8"},
    {"NotUtf8InTheQuery", u"s3://secret/?%C3", "percent-encoded bytes that aren't UTF-8"},
};

class StorageIRIRefusal : public testing::TestWithParam<Refused> {};

TEST_P(StorageIRIRefusal, TellsWhyAndDoesNotQuote) {
    EXPECT_THAT(
        [] { StorageIRI(GetParam().text); },
        ThrowsMessage<std::invalid_argument>(
            AllOf(HasSubstr("not an absolute IRI"), HasSubstr(GetParam().reason), Not(HasSubstr("secret")))));
}

INSTANTIATE_TEST_SUITE_P(StorageIRI, StorageIRIRefusal, testing::ValuesIn(refused),
                         [](const auto& example) { return example.param.name; });

struct Step {
    const char* name;
    std::u16string base;
    std::u16string path;
    std::u16string reached;
};

const Step steps[] = {
    {"Root", u"s3://b/x/y?q#f", u"/", u"s3://b/"},
    {"RootOfABareHost", u"s3://b", u"/", u"s3://b/"},
    {"RootWithUserAndPort", u"s3://u:p@b:90/x", u"/", u"s3://u:p@b:90/"},
    {"RootWithoutHost", u"s3:x/y", u"/", u"s3:/"},
    {"RootOfAnEmptyHost", u"s3:///x", u"/", u"s3:///"},
    {"Rooted", u"s3://b/x/y", u"/a/b", u"s3://b/a/b"},
    {"Beside", u"s3://b/x/y", u"a", u"s3://b/x/a"},
    {"BelowAFolder", u"s3://b/x/y/", u"a", u"s3://b/x/y/a"},
    {"BelowABareHost", u"s3://b", u"a", u"s3://b/a"},
    {"Upwards", u"s3://b/x/y/z", u"../a", u"s3://b/x/a"},
    {"UpwardsFromTheRoot", u"s3://b/x", u"../../a", u"s3://b/a"},
    {"Nowhere", u"s3://b/x/y?q#f", u"", u"s3://b/x/y"},
    {"TwoSlashes", u"s3://b/x", u"//a", u"s3://b//a"},
    {"TwoSlashesWithoutHost", u"s3:/x", u"//a", u"s3:/.//a"},
    {"ColonFirst", u"s3://b/x", u"a:b", u"s3://b/a:b"},
    {"PlainCharacters", u"s3://b/", u"/100% a?b#c[d]", u"s3://b/100%25%20a%3Fb%23c%5Bd%5D"},
    {"Escapes", u"s3://b/", u"/%41", u"s3://b/%2541"},
    {"Unicode", u"s3://b/", u"/\u00FC/\U0001F600", u"s3://b/\u00FC/\U0001F600"},
};

class StorageIRIPath : public testing::TestWithParam<Step> {};

TEST_P(StorageIRIPath, IsTakenRelativeToTheBase) {
    const auto& [name, base, path, reached] = GetParam();
    EXPECT_EQ(utf8(StorageIRI(StorageIRI(base), path).toString()), utf8(reached));
}

INSTANTIATE_TEST_SUITE_P(StorageIRI, StorageIRIPath, testing::ValuesIn(steps),
                         [](const auto& example) { return example.param.name; });

TEST(StorageIRI, GivesBackAPlainPathThatItWasMadeWith) {
    const StorageIRI root(u"s3://bucket/");
    for (const std::u16string path : {u"/a b/100%", u"/a?b#c/%41", u"/\uE000\uFFFD\u202E", u"/a//b/", u"/\n"})
        EXPECT_EQ(utf8(StorageIRI(root, path).getPath()), utf8(path));
}

TEST(StorageIRI, RefusesAPathThatIsNotUtf16) {
    const StorageIRI root(u"s3://bucket/");
    EXPECT_THROW(StorageIRI(root, std::u16string(1, char16_t(0xDC00))), std::invalid_argument);
}

TEST(StorageIRI, IsEqualToAnotherSpellingOfItself) {
    EXPECT_EQ(StorageIRI(u"S3://b/\u00FC/./x"), StorageIRI(u"s3://b/%c3%bc/%78"));
    EXPECT_EQ(StorageIRI(StorageIRI(u"s3://b/"), u"\u00FC"), StorageIRI(u"s3://b/%C3%BC"));
}

TEST(StorageIRI, DiffersByTheCaseOfItsHostAndByAnySign) {
    EXPECT_NE(StorageIRI(u"s3://Bucket/"), StorageIRI(u"s3://bucket/"));
    EXPECT_NE(StorageIRI(u"s3://bucket/a"), StorageIRI(u"s3://bucket/a/"));
    EXPECT_NE(StorageIRI(u"s3://bucket/a%2Fb"), StorageIRI(u"s3://bucket/a/b"));
}

TEST(StorageIRI, CanBeCopied) {
    StorageIRI iri(u"s3://one/a");
    const StorageIRI copy(iri);
    iri = StorageIRI(u"s3://two/b");
    EXPECT_EQ(copy, StorageIRI(u"s3://one/a"));
    EXPECT_EQ(utf8(iri.getHost()), "two");
}

}  // namespace
