#include <aws/s3/model/ListObjectsV2Result.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "s3/Answer.hpp"
#include "s3/ErrorMarshalling.hpp"
#include "s3/Operations.hpp"

using namespace standin::aws::s3;

namespace {

constexpr std::size_t mebibyte = std::size_t{1} << 20;

std::string repeated(const std::string& text, std::size_t times) {
    std::string result;
    result.reserve(text.size() * times);
    for (std::size_t i = 0; i < times; ++i)
        result += text;
    return result;
}

std::string attributes(std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += " a" + std::to_string(i) + "=''";
    return result;
}

std::string inKey(const std::string& text) {
    return "<ListBucketResult><Contents><Key>" + text + "</Key></Contents></ListBucketResult>";
}

Aws::S3::Model::ListObjectsV2Result listingIn(const std::string& text) {
    Answer answer;
    answer.document = std::make_unique<XmlDocument>(text);
    return listObjectsV2Result(answer);
}

std::string keyIn(const std::string& text) {
    const auto page = listingIn(inKey(text));
    return page.GetContents().size() == 1 ? page.GetContents()[0].GetKey() : "no key";
}

/// Reads the text in every way an answer is read, in a process that may have that much more memory than it
/// has and the processor for ten seconds. Ends the process.
[[noreturn]] void readWithin(std::size_t moreMemory, const std::string& text) {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlim_t memory = pages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) + moreMemory;
    const rlimit addressSpace{memory, memory};
    const rlimit processor{10, 10};
    setrlimit(RLIMIT_AS, &addressSpace);
    setrlimit(RLIMIT_CPU, &processor);
    listingIn(text);
    errorFrom(400, XmlDocument(text));
    std::_Exit(0);
}

struct Hostile {
    const char* name;
    std::string text;
};

class HostileXml : public testing::TestWithParam<Hostile> {};

const Hostile hostileTexts[] = {
    {"Nesting", repeated("<a>", 100000)},
    {"NestingThatCloses", repeated("<a>", 100000) + repeated("</a>", 100000)},
    {"LayoutOfDeepElements", inKey(repeated("<a>", 95) + repeated("<b/>", 250000) + repeated("</a>", 95))},
    {"Elements", inKey(repeated("<b/>", 250000))},
    {"ElementsThatDontClose", repeated("<ListBucketResult><Contents>", 40000)},
    {"Attributes", "<ListBucketResult" + attributes(100000) + "/>"},
    {"AttributesBehindACommentsQuote", "<!-- don't --><ListBucketResult" + attributes(100000) + "/>"},
    {"AttributesInManyTags", "<a>" + repeated("<b" + attributes(300) + "/>", 300) + "</a>"},
    {"AttributeThatDoesntClose", "<a b=\"" + std::string(mebibyte, 'x')},
    {"NameOfAMegabyte", "<" + std::string(mebibyte, 'a') + "/>"},
    {"Entities", "<!DOCTYPE a [" + repeated("<!ENTITY b \"&b;&b;\">", 50000) + "]>" + inKey("&b;")},
    {"References", inKey(repeated("&#x10FFFF;", 100000))},
    {"ReferencesToNothing", inKey(repeated("&#99999999999999999999;", 50000))},
    {"ReferenceThatDoesntEnd", inKey("&#" + std::string(mebibyte, '1'))},
    {"Comments", repeated("<!---->", 150000)},
    {"CommentsThatDontClose", repeated("<!--", 250000)},
    {"Text", inKey(std::string(mebibyte, '>'))},
    {"ZeroBytes", std::string(mebibyte, '\0')},
    {"BadUtf8", inKey(std::string(mebibyte, '\xff'))},
};

}  // namespace

TEST_P(HostileXml, IsReadWithBoundedMemoryAndTime) {
    const std::string& text = GetParam().text;
    EXPECT_LE(text.size(), 2 * mebibyte);
    EXPECT_EXIT(readWithin(512 * mebibyte, text), testing::ExitedWithCode(0), "");
}

INSTANTIATE_TEST_SUITE_P(Every, HostileXml, testing::ValuesIn(hostileTexts),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(XmlEntities, OfADoctypeStayLiteralText) {
    const std::string doctype = "<!DOCTYPE a [<!ENTITY b \"c\"><!ENTITY d \"&b;&b;\">]>";
    EXPECT_EQ(listingIn(doctype + inKey("&d;")).GetContents()[0].GetKey(), "&d;");
    EXPECT_EQ(
        listingIn("<!DOCTYPE a SYSTEM \"file:///etc/hostname\">" + inKey("&b;")).GetContents()[0].GetKey(),
        "&b;");
}

TEST(XmlText, KeepsBytesThatArentUtf8) {
    EXPECT_EQ(keyIn("a\xff\xc3(b"), "a\xff\xc3(b");
}

TEST(XmlDocument, EndsAtAZeroByteAndIsNoneThen) {
    using namespace std::string_literals;
    EXPECT_EQ(keyIn("a\0b"s), "no key");
}

TEST(XmlDocument, IsNestedNinetyEightDeepAtMost) {
    EXPECT_TRUE(XmlDocument(repeated("<a>", 98) + repeated("</a>", 98)).parsed());
    EXPECT_EQ(XmlDocument(repeated("<a>", 99) + repeated("</a>", 99)).errorName(),
              "XML_ELEMENT_DEPTH_EXCEEDED");
}

TEST(XmlDocument, HasNoTagOfMoreThanFourKibibytes) {
    const auto withValueOf = [](std::size_t length) { return "<a b='" + std::string(length, '>') + "'/>"; };
    EXPECT_TRUE(XmlDocument(withValueOf(4000)).parsed());
    EXPECT_FALSE(XmlDocument(withValueOf(5000)).parsed());
    EXPECT_EQ(XmlDocument(withValueOf(5000)).root(), nullptr);
}

TEST(XmlDocument, MayHaveMoreThanFourKibibytesOfAnythingElse) {
    const std::string much(100000, 'x');
    EXPECT_EQ(keyIn(much), much);
    for (const auto& text : {"<!-- don't \"" + much + "--><a/>", "<?b '" + much + "?><a/>",
                             "<!b '" + much + "><a/>", "<a><![CDATA[<b '" + much + ">]]></a>"})
        EXPECT_TRUE(XmlDocument(text).parsed()) << text.substr(0, 12);
}
