#include "s3/Xml.hpp"

#include <gtest/gtest.h>

using namespace standin::aws::s3;

namespace {

std::string printedOf(const std::string& content) {
    const XmlDocument document("<a>" + content + "</a>");
    return document.root() ? printedText(*document.root()) : document.errorName();
}

std::string decodedOf(const std::string& content) {
    const XmlDocument document("<a>" + content + "</a>");
    return document.root() ? decodedText(*document.root()) : document.errorName();
}

}  // namespace

TEST(XmlText, IsPrintedAsAPrinterWouldWriteItAgain) {
    EXPECT_EQ(printedOf("plain"), "plain");
    EXPECT_EQ(printedOf("a &lt;b&gt; &amp; c"), "a &lt;b&gt; &amp; c");
    EXPECT_EQ(printedOf("one\ntwo"), "one&#xA;two");
    EXPECT_EQ(printedOf("<![CDATA[x<y]]>"), "<![CDATA[x<y]]>");
    EXPECT_EQ(printedOf(""), "");
}

TEST(XmlText, IsDecodedWhereItNamesAnObject) {
    EXPECT_EQ(decodedOf("a &lt;b&gt; &amp; &quot;c&quot; &apos;d&apos;"), "a <b> & \"c\" 'd'");
    EXPECT_EQ(decodedOf("&amp;lt;"), "&lt;");
    EXPECT_EQ(decodedOf("one\ntwo"), "one\ntwo");
}

TEST(XmlText, IsEmptyWhereThereIsNone) {
    const XmlDocument document("<a><b> x </b></a>");
    EXPECT_EQ(childText(document.root(), "b"), " x ");
    EXPECT_EQ(trimmedChildText(document.root(), "b"), "x");
    EXPECT_EQ(childText(document.root(), "c"), "");
    EXPECT_EQ(childText(nullptr, "b"), "");
}

TEST(XmlDocument, HasNoRootWhereItIsntOne) {
    EXPECT_FALSE(XmlDocument("<a>").parsed());
    EXPECT_EQ(XmlDocument("<a>").root(), nullptr);
    EXPECT_TRUE(XmlDocument("<?xml version=\"1.0\"?>").parsed());
    EXPECT_EQ(XmlDocument("<?xml version=\"1.0\"?>").root(), nullptr);
}
