#pragma once

#include "docs/Sources.hpp"

namespace docs {

/// A variable's name between two of these marks.
inline std::regex variableIn(char mark) {
    return std::regex(mark +
                      std::string("((ZR|AWS|S3VFS|S3SERVER|XDG)_[A-Z0-9_]+|HOME|TMPDIR|"
                                  "no_proxy|NO_PROXY|https?_proxy|HTTPS?_PROXY)") +
                      mark);
}

/// Those of the tables in docs/configuration.md, in which a variable's row begins with its name.
inline Names documentedVariables() {
    std::ifstream in(sources / "docs" / "configuration.md");
    Names names;
    for (std::string line; std::getline(in, line);)
        if (line.rfind("| `", 0) == 0)
            names.merge(namesIn(line.substr(0, line.find('|', 1)), variableIn('`')));
    return names;
}

}  // namespace docs
