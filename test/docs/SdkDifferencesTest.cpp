#include <gmock/gmock.h>

#include <algorithm>

#include "docs/Sources.hpp"

using docs::Names;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

/// The last cells of the tables' rows, which name the tests that show a difference.
std::vector<std::string> cellsOfTests() {
    std::ifstream in(docs::sources / "docs" / "sdk-differences.md");
    std::vector<std::string> cells;
    for (std::string line; std::getline(in, line);)
        if (line.rfind("| ", 0) == 0) cells.push_back(line.substr(line.rfind('|', line.size() - 2)));
    cells.erase(std::remove(cells.begin(), cells.end(), "| shown by |"), cells.end());  // the column's title
    return cells;
}

/// "Suite.Name", or with "*" at its end any test whose name begins so.
bool isNamedBy(const std::string& text, const std::string& test) {
    return text.back() == '*' ? test.compare(0, text.size() - 1, text, 0, text.size() - 1) == 0
                              : test == text;
}

TEST(SdkDifferences, AreShownByTestsThatExist) {
    const Names tests =
        docs::namesBelow("test", std::regex(R"(\bTEST(?:_F|_P)?\((\w+),\s*(\w+)\))"), "$1.$2");
    const auto cells = cellsOfTests();
    ASSERT_THAT(cells, Not(IsEmpty()));
    for (const std::string& cell : cells) {
        const Names named = docs::namesIn(cell, std::regex("`([^`]+)`"));
        EXPECT_THAT(named, Not(IsEmpty())) << cell;
        for (const std::string& name : named)
            EXPECT_TRUE(std::any_of(tests.begin(), tests.end(), [&](const std::string& test) {
                return isNamedBy(name, test);
            })) << name;
    }
}

}  // namespace
