#include <fl/i18n.hpp>

#include "HostileEnvironment.hpp"
#include "TransferTuning.hpp"
#include "docs/DocumentedVariables.hpp"

using namespace testsupport;
using docs::Names;
using ::testing::AnyOf;
using ::testing::ContainerEq;
using ::testing::ContainsRegex;
using ::testing::Each;
using ::testing::IsSubsetOf;
using ::testing::MatchesRegex;

namespace {

/// Variables whose every value is good for something, if only for the default.
const Names forgivingVariables = {"ZR_AWS_SCHEME",
                                  "ZR_AWS_PROXY",
                                  "ZR_AWS_GETDATA_ATTEMPTS",
                                  "ZR_AWS_RETRYTIMEMS",
                                  "AWS_PROFILE",
                                  "AWS_DEFAULT_PROFILE",
                                  "AWS_CONFIG_FILE",
                                  "AWS_RETRY_MODE",
                                  "AWS_MAX_ATTEMPTS",
                                  "AWS_EC2_METADATA_DISABLED",
                                  "AWS_S3_US_EAST_1_REGIONAL_ENDPOINT",
                                  "XDG_CONFIG_HOME",
                                  "no_proxy",
                                  "NO_PROXY"};

/// Variables that decide who is asked, who asks, or what is sent; with what the failures must name. A region
/// that could be one leads to a host that the certificate doesn't bear, 60. Of 1 MiB, a header makes libcurl
/// run out of memory, 27, or is left out by it so that the signature fails, and a path is no file, 77, or too
/// long, 100: both by its version.
struct Deciding {
    const char* variable;
    const char* cause;
};

void PrintTo(const Deciding& deciding, std::ostream* out) {
    *out << deciding.variable;
}

constexpr Deciding decidingVariables[] = {
    {"AWS_REGION", "Invalid region|curlCode: 60"},
    {"AWS_DEFAULT_REGION", "Invalid region|curlCode: 60"},
    {"ZR_AWS_GETLOCATION_REGION", "curlCode: 60"},
    {"AWS_ACCESS_KEY_ID", "Permission .* denied|response code: 400|control character|curlCode: 27"},
    {"AWS_SECRET_ACCESS_KEY", "Permission .* denied"},
    {"AWS_SESSION_TOKEN", "Permission .* denied|response code: 400|control character|curlCode: 27"},
    {"AWS_SHARED_CREDENTIALS_FILE", "ill-formed UTF-8"},
    {"ZR_ROOT_CERT_FILE", "curlCode: (60|77|100),"},
    {"ZR_ROOT_CERT_PATH", "curlCode: 100,"},
    {"AWS_EXECUTION_ENV", "curlCode: 27"},
    {"AWS_SDK_UA_APP_ID", "response code: 400|curlCode: 27"},
};

/// Variables that lead to other machines or files of this one: nothing is sent with these.
const Names leadingVariables = {"ZR_PROXY_HOST", "ZR_PROXY_PORT", "ZR_PROXY_USERNAME", "ZR_PROXY_PASSWORD",
                                "http_proxy",    "https_proxy",   "HTTP_PROXY",        "HTTPS_PROXY",
                                "HOME",          "S3VFS_SETTINGS"};

/// Variables with tests of their own: the first four below; the metadata service's in
/// MetadataConformanceTest, whose tests initialise the SDK anew; the server's keys in its ProgramTest; the
/// folder for temporary files in CloudProviderTest.
const Names otherVariables = {"ZR_AWS_ENDPOINT_OVERRIDE",
                              "ZR_AWS_TRANSFER_BUFFER_SIZE",
                              "ZR_AWS_TRANSFER_MAX_HEAP_SIZE",
                              "ZR_AWS_TRANSFER_MAX_NUM_THREADS",
                              "AWS_EC2_METADATA_SERVICE_ENDPOINT",
                              "AWS_EC2_METADATA_SERVICE_ENDPOINT_MODE",
                              "S3SERVER_ACCESS_KEY",
                              "S3SERVER_SECRET_KEY",
                              "TMPDIR"};

TEST(HostileVariables, AreAllThatAreDocumented) {
    Names tested;
    for (const auto* const names : {&forgivingVariables, &leadingVariables, &otherVariables})
        tested.insert(names->begin(), names->end());
    for (const auto& deciding : decidingVariables)
        tested.insert(deciding.variable);
    EXPECT_THAT(tested, ContainerEq(docs::documentedVariables()));
}

const auto nameOfVariable = [](const auto& variable) { return variable.param; };

class ForgivingVariable : public HostileEnvironment, public ::testing::WithParamInterface<std::string> {};

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

INSTANTIATE_TEST_SUITE_P(Of, ForgivingVariable, ::testing::ValuesIn(forgivingVariables), nameOfVariable);

/// Whether the AWS SDK sends it in a header with the line breaks that it holds. What the stand-in does about
/// that is tested with it.
bool isSentInAHeader(const std::string& variable) {
    return variable == "AWS_ACCESS_KEY_ID" || variable == "AWS_SESSION_TOKEN" ||
           variable == "AWS_SDK_UA_APP_ID" || variable == "AWS_EXECUTION_ENV";
}

class DecidingVariable : public HostileEnvironment, public ::testing::WithParamInterface<Deciding> {};

TEST_P(DecidingVariable, EndsInAnExplainedErrorOrTheDefaultAndReachesNobodyElse) {
    const auto& [variable, cause] = GetParam();
    // So that one client is asked alone, and its answer told.
    if (variable != std::string("ZR_AWS_GETLOCATION_REGION")) environment.set("AWS_REGION", "eu-west-3");
    for (const auto& text : hostileTexts()) {
        if (text.find('\n') != std::string::npos && isSentInAHeader(variable)) continue;
        SCOPED_TRACE(shown(text));
        environment.set(variable, text);
        EXPECT_THAT(failureOfReading(), AnyOf("", ContainsRegex(cause)));
    }
    expectNoInjectedHeader();
    EXPECT_THAT(proxy.tunnels(), Each(MatchesRegex("travelled\\.s3\\.[a-z0-9-]+\\.amazonaws\\.com:443")));
}

INSTANTIATE_TEST_SUITE_P(Of, DecidingVariable, ::testing::ValuesIn(decidingVariables),
                         [](const auto& deciding) { return deciding.param.variable; });

bool isUtf8(const std::string& text) {
    try {
        fl::i18n::to_ustring(text);
        return true;
    } catch (const fl::i18n::conversion_error&) {
        return false;
    }
}

class LeadingVariable : public HostileEnvironment, public ::testing::WithParamInterface<std::string> {};

TEST_P(LeadingVariable, KeepsNoBucketFromBeingOpenedUnlessTheCredentialsFileHasNoName) {
    environment.set("AWS_REGION", "eu-west-3");
    const auto requests = amazon.requests().size();
    for (const auto& text : hostileTexts()) {
        SCOPED_TRACE(shown(text));
        environment.set(GetParam(), text);
        const bool namesNoFile = GetParam() == "HOME" && !isUtf8(text);
        EXPECT_THAT(failureOfOpening(), ContainsRegex(namesNoFile ? "^ill-formed UTF-8" : "^$"));
    }
    EXPECT_EQ(amazon.requests().size(), requests);
}

INSTANTIATE_TEST_SUITE_P(Of, LeadingVariable, ::testing::ValuesIn(leadingVariables), nameOfVariable);

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
        EXPECT_THAT(failureOfReading(), AnyOf("", ContainsRegex("DNS Label|not a valid URI|curlCode")));
        const auto tunnels = proxy.tunnels();
        const auto first = tunnels.begin() + static_cast<std::ptrdiff_t>(before);
        EXPECT_THAT(std::set<std::string>(first, tunnels.end()), IsSubsetOf(tunnelsTo(text)));
    }
    expectNoInjectedHeader();
}

TEST_F(HostileEnvironment, GivesANumberOfEachTransferSetting) {
    using namespace storage::s3provider;
    for (const auto& text : hostileTexts()) {
        SCOPED_TRACE(shown(text));
        for (const char* const setting : {"BUFFER_SIZE", "MAX_HEAP_SIZE", "MAX_NUM_THREADS"})
            environment.set(std::string("ZR_AWS_TRANSFER_") + setting, text);
        // The texts begin with no digits but these.
        const bool isNumber = text == "-1" || text == "127.0.0.1";
        EXPECT_EQ(transferBufferSize() != 5242880, isNumber);
        EXPECT_EQ(transferMaxHeapSize() != 52428800, isNumber);
        EXPECT_EQ(transferMaxNumThreads() != 10, isNumber);
    }
}

}  // namespace
