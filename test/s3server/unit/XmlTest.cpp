#include "text/Xml.hpp"

#include <gmock/gmock.h>

#include "Refusal.hpp"
#include "text/XmlReader.hpp"

namespace s3server::test {
namespace {

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

TEST(XmlWriter, ClosesWhatItOpensAndLeavesEmptyElementsShort) {
    XmlWriter xml;
    xml.open("A").element("B", "text").element("C", "").element("D", 7).flag("E", true).close();
    EXPECT_EQ(xml.document(), declaration + "<A><B>text</B><C/><D>7</D><E>true</E></A>");
}

TEST(XmlWriter, EscapesMarkupAndWhatAParserWouldChange) {
    EXPECT_EQ(xmlEscaped("a&b<c>\"d\"\r\n\t\xc3\xbc"), "a&amp;b&lt;c&gt;&quot;d&quot;&#13;&#10;&#9;\xc3\xbc");
}

TEST(XmlWriter, WritesUtf8WhateverItIsGiven) {
    EXPECT_EQ(xmlEscaped("a\xff\xc3(b"), "a\xef\xbf\xbd\xef\xbf\xbd(b");
}

TEST(XmlReader, ReadsTextBackAsItWasWritten) {
    const std::string key = " a&b<c>\"'\r\n\xc3\xbc ";
    XmlWriter xml;
    xml.openRoot("Delete").element("Key", key).close();
    const XmlReader reader(Bytes(xml.document()), "Delete");
    EXPECT_EQ(childText(reader.root(), "Key"), key);
}

TEST(XmlReader, JoinsTextAndCharacterData) {
    const XmlReader reader(Bytes(std::string("<A><B>a&amp;<![CDATA[<b>]]>c</B></A>")), "A");
    EXPECT_EQ(childText(reader.root(), "B"), "a&<b>c");
    EXPECT_EQ(childText(reader.root(), "C"), "");
}

TEST(XmlReader, RefusesOtherDocuments) {
    for (const char* const text : {"", "no xml", "<?xml version=\"1.0\"?>", "<B/>", "<A>", "<A><B></A></B>"})
        EXPECT_EQ(codeOf([text] { XmlReader(Bytes(std::string(text)), "A"); }), "MalformedXML") << text;
}

}  // namespace
}  // namespace s3server::test
