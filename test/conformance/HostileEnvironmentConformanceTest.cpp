#include <set>

#include "HostileEnvironmentTest.hpp"

using namespace testsupport;
using ::testing::Each;
using ::testing::IsSubsetOf;
using ::testing::MatchesRegex;

namespace {

using HostileEnvironment = HostileEnvironmentTest;

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

/// Whether the AWS SDK sends it in a header with the line breaks that it holds. What the stand-in does about
/// that is tested with it.
bool isSentInAHeader(const std::string& variable) {
    return variable == "AWS_ACCESS_KEY_ID" || variable == "AWS_SESSION_TOKEN" ||
           variable == "AWS_SDK_UA_APP_ID" || variable == "AWS_EXECUTION_ENV";
}

/// Variables that decide who is asked, who asks, or what is sent.
class DecidingVariable : public HostileEnvironment, public ::testing::WithParamInterface<const char*> {};

TEST_P(DecidingVariable, EndsInAnExplainedErrorOrTheDefaultAndReachesNobodyElse) {
    for (const auto& text : hostileTexts()) {
        if (text.find('\n') != std::string::npos && isSentInAHeader(GetParam())) continue;
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

/// Who is asked where an endpoint has this text. The AWS SDK makes a host of the dots and escapes of some,
/// which nobody has; the stand-in asks nobody for these.
std::set<std::string> tunnelsTo(const std::string& endpoint) {
    if (endpoint.empty())
        return {"travelled.s3.us-east-2.amazonaws.com:443", "travelled.s3.eu-west-3.amazonaws.com:443"};
    if (endpoint == "127.0.0.1") return {"127.0.0.1:443"};
    if (endpoint == "99999999999999999999") return {"travelled.99999999999999999999:443"};
    for (const char* const text : {"evil.example/", "https://evil.example", "evil.example:443"})
        if (endpoint == text) return {"travelled.evil.example:443"};
    return {"travelled...:443"};
}

TEST_F(HostileEnvironment, ReachesNoHostThatAnEndpointOverrideDoesntName) {
    for (const auto& text : hostileTexts()) {
        SCOPED_TRACE(shown(text));
        environment.set("ZR_AWS_ENDPOINT_OVERRIDE", text);
        const auto before = proxy.tunnels().size();
        expectSuccessOrExplanation();
        const auto tunnels = proxy.tunnels();
        const auto first = tunnels.begin() + static_cast<std::ptrdiff_t>(before);
        EXPECT_THAT(std::set<std::string>(first, tunnels.end()), IsSubsetOf(tunnelsTo(text)));
    }
    expectNoInjectedHeader();
}

}  // namespace
