#include <gmock/gmock.h>

#include <algorithm>

#include "docs/Sources.hpp"

using docs::Names;
using ::testing::Gt;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

namespace {

/// What names the tests that show a difference: lines that begin so, and the last cells of tables' rows.
std::vector<std::string> mentionsOfTests() {
    std::ifstream in(docs::sources / "docs" / "sdk-differences.md");
    std::vector<std::string> mentions;
    for (std::string line; std::getline(in, line);) {
        if (line.rfind("Shown by ", 0) == 0) mentions.push_back(line);
        if (line.rfind("| ", 0) == 0) mentions.push_back(line.substr(line.rfind('|', line.size() - 2)));
    }
    mentions.erase(std::remove(mentions.begin(), mentions.end(), "| shown by |"), mentions.end());  // a title
    return mentions;
}

/// Every difference has a heading of its own.
std::size_t countOfDifferences() {
    std::ifstream in(docs::sources / "docs" / "sdk-differences.md");
    std::size_t count = 0;
    for (std::string line; std::getline(in, line);)
        if (line.rfind("### ", 0) == 0) ++count;
    return count;
}

/// "Suite.Name", or with "*" at its end any test whose name begins so.
bool isNamedBy(const std::string& text, const std::string& test) {
    return text.back() == '*' ? test.compare(0, text.size() - 1, text, 0, text.size() - 1) == 0
                              : test == text;
}

TEST(SdkDifferences, AreShownByTestsThatExist) {
    const Names tests =
        docs::namesBelow("test", std::regex(R"(\bTEST(?:_F|_P)?\((\w+),\s*(\w+)\))"), "$1.$2");
    const auto mentions = mentionsOfTests();
    ASSERT_THAT(mentions, SizeIs(Gt(countOfDifferences())));  // and the buckets that are not offered
    for (const std::string& mention : mentions) {
        const Names named = docs::namesIn(mention, std::regex("`([^`]+)`"));
        EXPECT_THAT(named, Not(IsEmpty())) << mention;
        for (const std::string& name : named)
            EXPECT_TRUE(std::any_of(tests.begin(), tests.end(), [&](const std::string& test) {
                return isNamedBy(name, test);
            })) << name;
    }
}

}  // namespace
