#include <set>

#include "DefaultPathTest.hpp"
#include "DiagnosticRecord.hpp"

using namespace testsupport;
using ::testing::Each;
using ::testing::MatchesRegex;

namespace {

/// What a variable may hold that nobody meant for it.
const std::vector<std::string>& hostileTexts() {
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
std::string shown(const std::string& text) {
    return ::testing::PrintToString(text.substr(0, 40)) + " of " + std::to_string(text.size()) + " bytes";
}

/// The default path with one variable at a time holding text from elsewhere. A request is tried once, so that
/// what fails does so at once.
class HostileEnvironment : public DefaultPathTest {
protected:
    HostileEnvironment() {
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

std::string nameOfVariable(const ::testing::TestParamInfo<const char*>& variable) {
    return variable.param;
}

/// Variables whose every value is good for something, if only for the default.
class ForgivingVariable : public HostileEnvironment, public ::testing::WithParamInterface<const char*> {};

TEST_P(ForgivingVariable, LeavesTheDefaultWhateverItHolds) {
    for (const auto& text : hostileTexts()) {
        SCOPED_TRACE(shown(text));
        environment.set(GetParam(), text);
        EXPECT_EQ(failureOfReading(), "");
    }
    expectNoInjectedHeader();
    EXPECT_THAT(proxy.tunnels(),
                Each(MatchesRegex("travelled\\.s3\\.(us-east-2|eu-west-3)\\.amazonaws\\.com:443")));
}

INSTANTIATE_TEST_SUITE_P(Of, ForgivingVariable,
                         ::testing::Values("ZR_AWS_SCHEME", "ZR_AWS_PROXY", "ZR_AWS_GETDATA_ATTEMPTS",
                                           "ZR_AWS_RETRYTIMEMS", "ZR_ROOT_CERT_PATH", "AWS_PROFILE",
                                           "AWS_DEFAULT_PROFILE", "AWS_CONFIG_FILE", "AWS_RETRY_MODE",
                                           "AWS_MAX_ATTEMPTS", "AWS_EC2_METADATA_DISABLED",
                                           "AWS_EC2_METADATA_SERVICE_ENDPOINT",
                                           "AWS_EC2_METADATA_SERVICE_ENDPOINT_MODE",
                                           "AWS_S3_US_EAST_1_REGIONAL_ENDPOINT"),
                         nameOfVariable);

/// Variables that decide who is asked, who asks, or what is sent.
class DecidingVariable : public HostileEnvironment, public ::testing::WithParamInterface<const char*> {};

TEST_P(DecidingVariable, EndsInAnExplainedErrorOrTheDefaultAndReachesNobodyElse) {
    for (const auto& text : hostileTexts()) {
        SCOPED_TRACE(shown(text));
        environment.set(GetParam(), text);
        expectSuccessOrExplanation();
    }
    expectNoInjectedHeader();
    EXPECT_THAT(proxy.tunnels(), Each(MatchesRegex("travelled\\.s3\\.[a-z0-9-]+\\.amazonaws\\.com:443")));
}

INSTANTIATE_TEST_SUITE_P(Of, DecidingVariable,
                         ::testing::Values("AWS_REGION", "AWS_DEFAULT_REGION", "ZR_AWS_GETLOCATION_REGION",
                                           "AWS_ACCESS_KEY_ID", "AWS_SECRET_ACCESS_KEY", "AWS_SESSION_TOKEN",
                                           "AWS_SHARED_CREDENTIALS_FILE", "ZR_ROOT_CERT_FILE",
                                           "AWS_EXECUTION_ENV", "AWS_SDK_UA_APP_ID"),
                         nameOfVariable);

/// The tunnels that reading takes with an endpoint of this text, once each; none where the text names no
/// host.
std::set<std::string> tunnelsTo(const std::string& endpoint) {
    if (endpoint.empty())
        return {"travelled.s3.us-east-2.amazonaws.com:443", "travelled.s3.eu-west-3.amazonaws.com:443"};
    if (endpoint == "127.0.0.1") return {"127.0.0.1:443"};
    if (endpoint == "99999999999999999999") return {"travelled.99999999999999999999:443"};
    for (const char* const text : {"evil.example/", "https://evil.example", "evil.example:443"})
        if (endpoint == text) return {"travelled.evil.example:443"};
    return {};
}

TEST_F(HostileEnvironment, ReachesNoHostThatAnEndpointOverrideDoesntName) {
    for (const auto& text : hostileTexts()) {
        SCOPED_TRACE(shown(text));
        environment.set("ZR_AWS_ENDPOINT_OVERRIDE", text);
        const auto before = proxy.tunnels().size();
        expectSuccessOrExplanation();
        const auto tunnels = proxy.tunnels();
        const auto first = tunnels.begin() + static_cast<std::ptrdiff_t>(before);
        EXPECT_EQ(std::set<std::string>(first, tunnels.end()), tunnelsTo(text));
    }
    expectNoInjectedHeader();
}

}  // namespace
