#include <gmock/gmock.h>

#include "docs/Sources.hpp"

using docs::Names;

namespace {

/// A variable's name between two of these marks.
std::regex variableIn(char mark) {
    return std::regex(mark + std::string("((ZR|AWS|S3VFS|S3SERVER|XDG)_[A-Z0-9_]+|HOME|NO_PROXY|no_proxy)") +
                      mark);
}

/// Of the tables, in which a variable's row begins with its name.
Names variablesDocumented() {
    std::ifstream in(docs::sources / "docs" / "configuration.md");
    Names names;
    for (std::string line; std::getline(in, line);)
        if (line.rfind("| `", 0) == 0)
            names.merge(docs::namesIn(line.substr(0, line.find('|', 1)), variableIn('`')));
    return names;
}

TEST(Configuration, DocumentsExactlyTheVariablesThatAreRead) {
    Names readBySources;
    for (const char* const folder : {"src", "standin", "s3server", "s3vfs"})
        readBySources.merge(docs::namesBelow(folder, variableIn('"')));
    EXPECT_THAT(variablesDocumented(), ::testing::ContainerEq(readBySources));
}

}  // namespace
