#include "core/RoleCredentials.hpp"

#include "EnvironmentTest.hpp"

using Aws::Utils::DateTime;
using standin::aws::parseRoleCredentials;

namespace {

std::string parsed(const std::string& document) {
    const auto credentials = parseRoleCredentials(document);
    return credentials ? toString(*credentials) : "none";
}

std::string repeated(const std::string& text, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i)
        all += text;
    return all;
}

TEST(RoleCredentials, AreReadWithTheirExpiration) {
    const auto credentials = parseRoleCredentials(metadata::credentials("KEY", "2024-02-29T12:00:00Z"));
    ASSERT_TRUE(credentials);
    EXPECT_EQ(toString(*credentials), "KEY:SECRET:TOKEN");
    EXPECT_EQ(credentials->GetExpiration().Millis(), 1709208000000);
}

TEST(RoleCredentials, NeverExpireWithoutAnExpirationThatCanBeRead) {
    const DateTime never = Aws::Auth::AWSCredentials().GetExpiration();
    EXPECT_EQ(parseRoleCredentials(metadata::credentials("KEY", "soon"))->GetExpiration(), never);
    EXPECT_EQ(parseRoleCredentials(R"({"AccessKeyId": "KEY"})")->GetExpiration(), never);
}

TEST(RoleCredentials, AreEmptyWhereTextsAreMissing) {
    EXPECT_EQ(parsed("{}"), ":");
    EXPECT_EQ(parsed(R"({"Code": "Failed"})"), ":");
    EXPECT_EQ(parsed(R"({"AccessKeyId": "KEY"})"), "KEY:");
    EXPECT_EQ(parsed(R"({"AccessKeyId": "KEY", "SecretAccessKey": 7, "Token": ["TOKEN"]})"), "KEY:");
}

TEST(RoleCredentials, AreEmptyInADocumentOfAnotherShape) {
    for (const char* const document : {"[]", "null", "7", "\"text\"", R"([{"AccessKeyId": "KEY"}])"})
        EXPECT_EQ(parsed(document), ":") << document;
}

TEST(RoleCredentials, AreInNoTextThatIsNotJson) {
    for (const char* const document :
         {"", "garbage", "{", R"({"AccessKeyId": "KEY",})", "{\"AccessKeyId\": \"\xff\"}", "{} {}"})
        EXPECT_EQ(parsed(document), "none") << document;
}

TEST(RoleCredentials, AreLookedForInADocumentOfAnyDepth) {
    constexpr std::size_t deep = 500000;
    EXPECT_EQ(parsed(repeated("[", deep)), "none");
    EXPECT_EQ(parsed(repeated("[", deep) + repeated("]", deep)), ":");
    EXPECT_EQ(parsed(R"({"AccessKeyId": "KEY", "more": )" + repeated("[", deep) + repeated("]", deep) + "}"),
              "KEY:");
}

}  // namespace
