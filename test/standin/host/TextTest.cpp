#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <fl/i18n.hpp>
#include "support/process/Environment.hpp"

#include <stdexcept>
#include <string>

namespace {

using namespace std::string_literals;
using fl::i18n::conversion_error;
using testing::ThrowsMessage;
using testsupport::Environment;

struct Form {
    const char* name;
    std::string utf8;
    std::u16string utf16;
    std::wstring wide;
};

const Form forms[] = {
    {"Empty", "", u"", L""},
    {"Ascii", "us-east-1", u"us-east-1", L"us-east-1"},
    {"TwoBytes", "\xC3\xBC", u"\u00FC", L"\u00FC"},
    {"ThreeBytes", "\xE6\x97\xA5\xE6\x9C\xAC", u"\u65E5\u672C", L"\u65E5\u672C"},
    {"SurrogatePair", "a\xF0\x9F\x98\x80z", u"a\U0001F600z", L"a\U0001F600z"},
    {"EmbeddedNul", "a\0b\0"s, u"a\0b\0"s, L"a\0b\0"s},
    {"ByteOrderMark", "\xEF\xBB\xBFx", u"\uFEFFx", L"\uFEFFx"},
    {"Noncharacter", "\xEF\xBF\xBF", u"\uFFFF", L"\uFFFF"},
    {"LastCodePoint", "\xF4\x8F\xBF\xBF", u"\U0010FFFF", L"\U0010FFFF"},
};

class TextForms : public testing::TestWithParam<Form> {};

TEST_P(TextForms, ConvertIntoEachOther) {
    const Form& form = GetParam();
    EXPECT_EQ(fl::i18n::to_ustring(form.utf8), form.utf16);
    EXPECT_EQ(fl::i18n::to_string(form.utf16), form.utf8);
    EXPECT_EQ(fl::i18n::ustring_to_utf8(form.utf16), form.utf8);
    EXPECT_EQ(fl::i18n::to_wstring(form.utf16), form.wide);
    EXPECT_EQ(fl::i18n::to_ustring(form.wide), form.utf16);
}

INSTANTIATE_TEST_SUITE_P(Text, TextForms, testing::ValuesIn(forms),
                         [](const auto& example) { return example.param.name; });

TEST(Text, OfAPointerEndsAtItsNul) {
    const char* const text = "\xC3\xBC\0more";
    EXPECT_EQ(fl::i18n::to_ustring(text), u"\u00FC");
}

struct IllFormed8 {
    const char* name;
    std::string text;
    const char* message;
};

const IllFormed8 illFormed8[] = {
    {"StrayByte", "ab\xFF", "ill-formed UTF-8 at byte 2 of 3"},
    {"Truncated", "secret\xE2\x82", "ill-formed UTF-8 at byte 6 of 8"},
    {"Overlong", "\xC0\xAF", "ill-formed UTF-8 at byte 0 of 2"},
    {"Surrogate", "a\xED\xA0\x80", "ill-formed UTF-8 at byte 1 of 4"},
    {"AboveUnicode", "\xF4\x90\x80\x80", "ill-formed UTF-8 at byte 0 of 4"},
    {"AfterANul", "a\0\x80"s, "ill-formed UTF-8 at byte 2 of 3"},
};

class IllFormedUtf8 : public testing::TestWithParam<IllFormed8> {};

TEST_P(IllFormedUtf8, IsRefusedWithItsPlaceAndWithoutItsText) {
    EXPECT_THAT([] { fl::i18n::to_ustring(GetParam().text); },
                ThrowsMessage<conversion_error>(GetParam().message));
}

INSTANTIATE_TEST_SUITE_P(Text, IllFormedUtf8, testing::ValuesIn(illFormed8),
                         [](const auto& example) { return example.param.name; });

struct IllFormed16 {
    const char* name;
    std::u16string text;
    const char* message;
};

const IllFormed16 illFormed16[] = {
    {"LeadAtTheEnd", {u'a', 0xD83D}, "ill-formed UTF-16: a lone surrogate at code unit 1 of 2"},
    {"LeadBeforeText", {0xD83D, u'a'}, "ill-formed UTF-16: a lone surrogate at code unit 0 of 2"},
    {"LeadBeforeLead", {0xD83D, 0xD83D, 0xDE00}, "ill-formed UTF-16: a lone surrogate at code unit 0 of 3"},
    {"LoneTrail", {u'a', u'b', 0xDE00}, "ill-formed UTF-16: a lone surrogate at code unit 2 of 3"},
    {"TrailAfterAPair", {0xD83D, 0xDE00, 0xDE00}, "ill-formed UTF-16: a lone surrogate at code unit 2 of 3"},
};

class IllFormedUtf16 : public testing::TestWithParam<IllFormed16> {};

TEST_P(IllFormedUtf16, IsRefusedWithItsPlaceAndWithoutItsText) {
    const auto& [name, text, message] = GetParam();
    EXPECT_THAT([&t = text] { fl::i18n::ustring_to_utf8(t); }, ThrowsMessage<conversion_error>(message));
    EXPECT_THAT([&t = text] { fl::i18n::to_string(t); }, ThrowsMessage<conversion_error>(message));
    EXPECT_THAT([&t = text] { fl::i18n::to_wstring(t); }, ThrowsMessage<conversion_error>(message));
}

INSTANTIATE_TEST_SUITE_P(Text, IllFormedUtf16, testing::ValuesIn(illFormed16),
                         [](const auto& example) { return example.param.name; });

TEST(EnvironmentText, IsEmptyForAVariableThatIsNotSet) {
    const Environment environment{{"S3P_TEST", std::nullopt}};
    EXPECT_EQ(fl::i18n::getenv("S3P_TEST"), u"");
}

TEST(EnvironmentText, IsTheVariablesValue) {
    const Environment environment{{"S3P_TEST", "eu-\xC3\xBC\xF0\x9F\x98\x80"}};
    EXPECT_EQ(fl::i18n::getenv("S3P_TEST"), u"eu-\u00FC\U0001F600");
}

TEST(EnvironmentText, TakesItsNameAsAnyText) {
    const Environment environment{{"S3P_TEST", "value"}};
    EXPECT_EQ(fl::i18n::getenv(std::string("S3P_TEST")), u"value");
}

TEST(EnvironmentText, ShowsIllFormedBytesAsReplacementCharacters) {
    const Environment environment{{"S3P_TEST",
                                   "a\xFF"
                                   "b\xED\xA0\x80"
                                   "c\xE2\x82"}};
    EXPECT_EQ(fl::i18n::getenv("S3P_TEST"), u"a\uFFFDb\uFFFDc\uFFFD");
}

TEST(WideText, ThrowsForWhatIsNoCodePoint) {
    for (const wchar_t wrong :
         {wchar_t{0xD800}, wchar_t{0xDFFF}, wchar_t{0x110000}, static_cast<wchar_t>(-1)}) {
        const std::wstring text = std::wstring(L"ab") + wrong;
        EXPECT_THAT(
            [&] { fl::i18n::to_ustring(text); },
            ThrowsMessage<conversion_error>("ill-formed wide text: no code point at character 2 of 3"));
    }
}

}  // namespace
