#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace testsupport {

/// What a variable may hold that nobody meant for it.
inline const std::vector<std::string>& hostileTexts() {
    static const std::vector<std::string> texts = {
        "",
        " ",
        "@evil.example#",
        "../",
        "127.0.0.1",
        "evil.example/",
        "https://evil.example",
        "evil.example:443",
        "text\r\nx-injected: yes",
        "\n",
        "\x01\x1b[31m\x7f",
        "\xff\xfe\x80",
        "r\xC3\xA9gion",
        "%2e%2e%2f%00%0d%0a",
        "-1",
        "99999999999999999999",
        std::string(1024UL * 1024, 'a'),
    };
    return texts;
}

/// A text for a message, short and visible.
inline std::string shown(const std::string& text) {
    return ::testing::PrintToString(text.substr(0, 40)) + " of " + std::to_string(text.size()) + " bytes";
}

}  // namespace testsupport
