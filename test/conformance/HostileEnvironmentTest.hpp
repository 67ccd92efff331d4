#pragma once

#include <vector>

#include "DefaultPathTest.hpp"
#include "DiagnosticRecord.hpp"

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

/// The default path with one variable at a time holding text from elsewhere. A request is tried once, so that
/// what fails does so at once.
class HostileEnvironmentTest : public DefaultPathTest {
protected:
    HostileEnvironmentTest() {
        environment.set("AWS_RETRY_MODE", "standard");
        environment.set("AWS_MAX_ATTEMPTS", "1");
        environment.set("ZR_AWS_RETRYTIMEMS", "0");
        put(*S3ProviderFactoryV2(nullptr).createProvider(bucket), u"file", "content");
    }

    /// Reads the file through a new factory. Empty, or what the failure says.
    std::string failureOfReading() const {
        try {
            S3ProviderFactoryV2 fresh(nullptr);
            EXPECT_EQ(get(*fresh.createProvider(bucket), u"file"), "content");
            return {};
        } catch (const std::exception& failure) {
            return failure.what();
        }
    }

    /// An error that no exception explains has a record that does.
    void expectSuccessOrExplanation() {
        failedRequests.clear();
        const std::string failure = failureOfReading();
        EXPECT_TRUE(failure != "Unknown error" || !failedRequests.texts().empty());
    }

    void expectNoInjectedHeader() const {
        for (const auto& request : amazon.requests())
            EXPECT_EQ(request.header("x-injected"), std::nullopt);
    }

    const StorageIRI bucket{u"s3://travelled"};
    LogCapture failedRequests{"storage::s3provider::S3Client", storage::s3provider::LogFailedRequests};
};

}  // namespace testsupport
