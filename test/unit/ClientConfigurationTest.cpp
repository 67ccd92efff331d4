#include <aws/core/auth/AWSCredentialsProvider.h>

#include <foundation/certificates/certificates.hpp>
#include <memory>
#include <new>
#include <optional>
#include <stdexcept>

#include "AwsS3ClientFactory.hpp"
#include "support/plugin/FactoryTest.hpp"

using namespace testsupport;
using namespace storage::s3provider;
using ::testing::IsEmpty;

namespace {

using Proxies = std::vector<webproxy::ProxyInfo>;

const std::string proxyFailure = "Caught exception while parsing proxy information.\n what(): ";

/// Lets proxies be looked up.
class ClientConfiguration : public FactoryTest {
protected:
    ClientConfiguration() { environment.unset("ZR_AWS_PROXY"); }

    static void expectNoProxy(const Aws::Client::ClientConfiguration& configuration) {
        const Aws::Client::ClientConfiguration plain;
        EXPECT_EQ(configuration.proxyHost, plain.proxyHost);
        EXPECT_EQ(configuration.proxyPort, plain.proxyPort);
        EXPECT_EQ(configuration.proxyUserName, plain.proxyUserName);
        EXPECT_EQ(configuration.proxyPassword, plain.proxyPassword);
    }

    static Aws::Client::ClientConfiguration with(const Proxies& proxies) {
        return makeClientConfiguration([&](const std::wstring&) { return proxies; });
    }
};

TEST_F(ClientConfiguration, SpeaksHttpOnlyForTheUpperCaseWord) {
    for (const char* const word : {"", "https", "http", "Http", "HTTP ", " HTTP", "HTTPS"}) {
        environment.set("ZR_AWS_SCHEME", word);
        EXPECT_EQ(with({}).scheme, Aws::Http::Scheme::HTTPS) << word;
    }
    environment.unset("ZR_AWS_SCHEME");
    EXPECT_EQ(with({}).scheme, Aws::Http::Scheme::HTTPS);
    environment.set("ZR_AWS_SCHEME", "HTTP");
    EXPECT_EQ(with({}).scheme, Aws::Http::Scheme::HTTP);
}

TEST_F(ClientConfiguration, SetsItsLimitsAndLeavesTheRestToTheSdk) {
    const Aws::Client::ClientConfiguration plain;
    const auto configuration = with({});
    EXPECT_EQ(configuration.maxConnections, 1000u);
    EXPECT_EQ(configuration.requestTimeoutMs, 300000);
    EXPECT_EQ(configuration.connectTimeoutMs, 300000);
    EXPECT_EQ(configuration.httpRequestTimeoutMs, plain.httpRequestTimeoutMs);
    EXPECT_EQ(configuration.region, plain.region);
    EXPECT_EQ(configuration.endpointOverride, plain.endpointOverride);
    EXPECT_EQ(configuration.verifySSL, plain.verifySSL);
    EXPECT_EQ(configuration.proxyScheme, plain.proxyScheme);
    expectNoProxy(configuration);
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST_F(ClientConfiguration, TakesTheFirstProxyOnly) {
    const auto configuration = with({{L"proxy.example", 3128, L"user", L"pass w\u00F6rd"},
                                     {L"second", 1, L"", L""},
                                     {L"third", 2, L"", L""}});
    EXPECT_EQ(configuration.proxyHost, "proxy.example");
    EXPECT_EQ(configuration.proxyPort, 3128u);
    EXPECT_EQ(configuration.proxyUserName, "user");
    EXPECT_EQ(configuration.proxyPassword, "pass w\xC3\xB6rd");
}

TEST_F(ClientConfiguration, PassesANegativePortOnAsItComes) {
    EXPECT_EQ(with({{L"proxy.example", -1, L"", L""}}).proxyPort, static_cast<unsigned>(-1));
}

TEST_F(ClientConfiguration, LooksForTheProxyOfS3AsAWhole) {
    std::wstring asked;
    makeClientConfiguration([&](const std::wstring& url) {
        asked = url;
        return Proxies{};
    });
    EXPECT_EQ(asked, L"https://s3.amazonaws.com/");
}

TEST_F(ClientConfiguration, LooksForNoProxyWhenTheSwitchIsOff) {
    environment.set("ZR_AWS_PROXY", "OFF");
    bool asked = false;
    const auto lookup = [&](const std::wstring&) {
        asked = true;
        return Proxies{{L"proxy.example", 3128, L"user", L"password"}};
    };
    expectNoProxy(makeClientConfiguration(lookup));
    EXPECT_FALSE(asked);
    for (const char* const word : {"off", "Off", "0", "OFF ", "no"}) {
        environment.set("ZR_AWS_PROXY", word);
        EXPECT_EQ(makeClientConfiguration(lookup).proxyHost, "proxy.example") << word;
    }
}

TEST_F(ClientConfiguration, FindsTheEnvironmentsProxyByItself) {
    environment.set("ZR_PROXY_HOST", "proxy.example");
    environment.set("ZR_PROXY_PORT", "3128");
    EXPECT_EQ(makeClientConfiguration().proxyHost, "proxy.example");
    environment.set("ZR_PROXY_HOST", "other.example");
    EXPECT_EQ(makeClientConfiguration().proxyHost, "other.example");
    environment.set("ZR_AWS_PROXY", "OFF");
    EXPECT_EQ(makeClientConfiguration().proxyHost, "");
}

TEST_F(ClientConfiguration, GoesOnWithoutProxyWhenTheLookupFails) {
    environment.set("ZR_ROOT_CERT_FILE", "/certificates/file");
    environment.set("ZR_ROOT_CERT_PATH", "/certificates/folder");
    const auto configuration =
        makeClientConfiguration([](const std::wstring&) -> Proxies { throw std::runtime_error("boom"); });
    expectNoProxy(configuration);
    EXPECT_EQ(configuration.caFile, "/certificates/file");
    EXPECT_EQ(configuration.caPath, "/certificates/folder");
    EXPECT_EQ(configuration.maxConnections, 1000u);
    EXPECT_EQ(configuration.connectTimeoutMs, 300000);
    EXPECT_EQ(configuration.requestTimeoutMs, 300000);
    ASSERT_EQ(log.records().size(), 1u);
    EXPECT_EQ(log.records()[0].level, 256);
    EXPECT_EQ(log.records()[0].text, proxyFailure + "boom");
}

TEST_F(ClientConfiguration, GoesOnWithoutProxyWhateverExceptionTheLookupEndsIn) {
    expectNoProxy(
        makeClientConfiguration([](const std::wstring&) -> Proxies { throw std::logic_error("odd"); }));
    expectNoProxy(makeClientConfiguration([](const std::wstring&) -> Proxies { throw std::bad_alloc(); }));
    EXPECT_THAT(log.texts(),
                ::testing::ElementsAre(proxyFailure + "odd", proxyFailure + std::bad_alloc().what()));
}

TEST_F(ClientConfiguration, GoesOnWithoutProxyWhenThePreferencesCannotBeRead) {
    environment.set("ZR_PROXY_HOST", "proxy.example");
    environment.set("S3VFS_SETTINGS",
                    write("settings.json", R"({"orrery": {"web": {"UseProxy": true, "ProxyPort": 3128}}})"));
    const auto configuration = makeClientConfiguration();
    expectNoProxy(configuration);
    EXPECT_EQ(configuration.maxConnections, 1000u);
    ASSERT_EQ(log.records().size(), 1u);
    EXPECT_EQ(log.records()[0].level, 256);
    EXPECT_EQ(log.records()[0].text, proxyFailure + "setting 'ProxyPort' must be text, not number");
}

const std::wstring illFormed{static_cast<wchar_t>(0xD800)};

TEST_F(ClientConfiguration, KeepsTheHostWhenAProxysUserCannotBeRead) {
    const auto configuration = with({{L"proxy.example", 3128, illFormed, L"secret"}});
    EXPECT_EQ(configuration.proxyHost, "proxy.example");
    EXPECT_EQ(configuration.proxyPort, Aws::Client::ClientConfiguration().proxyPort);
    EXPECT_EQ(configuration.proxyPassword, "");
    ASSERT_EQ(log.records().size(), 1u);
    EXPECT_THAT(log.texts()[0], ::testing::StartsWith(proxyFailure));
}

TEST_F(ClientConfiguration, KeepsHostUserAndPortWhenAProxysPasswordCannotBeRead) {
    const auto configuration = with({{L"proxy.example", 3128, L"user", illFormed}});
    EXPECT_EQ(configuration.proxyHost, "proxy.example");
    EXPECT_EQ(configuration.proxyUserName, "user");
    EXPECT_EQ(configuration.proxyPort, 3128u);
    EXPECT_EQ(configuration.proxyPassword, "");
    EXPECT_EQ(log.records().size(), 1u);
}

TEST_F(ClientConfiguration, WritesNoRecordOfAFailedLookupUnlessItsLevelIsEnabled) {
    const LogCapture others{factoryChannel, LogCapture::allLevels & ~256U};
    makeClientConfiguration([](const std::wstring&) -> Proxies { throw std::runtime_error("boom"); });
    EXPECT_THAT(others.records(), IsEmpty());
}

TEST_F(ClientConfiguration, LetsOtherThingsThanExceptionsPass) {
    EXPECT_THROW(makeClientConfiguration([](const std::wstring&) -> Proxies { throw 7; }), int);
    EXPECT_THAT(log.records(), IsEmpty());
}

/// Keeps the settings that a client is made with, which it shows to whoever resolves its endpoints.
struct WatchingEndpoints : Aws::S3::Endpoint::S3EndpointProvider {
    void InitBuiltInParameters(const Aws::S3::S3ClientConfiguration& configuration) override {
        seen = configuration;
        S3EndpointProvider::InitBuiltInParameters(configuration);
    }

    std::optional<Aws::S3::S3ClientConfiguration> seen;
};

TEST_F(ClientConfiguration, BecomesThatOfAClientWithS3sOwnSettings) {
    using Policy = Aws::Client::AWSAuthV4Signer::PayloadSigningPolicy;
    const auto endpoints = std::make_shared<WatchingEndpoints>();
    makeS3Client(std::make_shared<Aws::Auth::SimpleAWSCredentialsProvider>("key", "secret"), endpoints,
                 with({}));
    ASSERT_TRUE(endpoints->seen);
    EXPECT_EQ(endpoints->seen->payloadSigningPolicy, Policy::Never);
    EXPECT_TRUE(endpoints->seen->useVirtualAddressing);
    EXPECT_EQ(endpoints->seen->maxConnections, 1000u);
}

TEST_F(ClientConfiguration, TakesCertificatesFromTheEnvironmentUnchecked) {
    environment.set("ZR_ROOT_CERT_FILE", "/no/such/file");
    environment.set("ZR_ROOT_CERT_PATH", "/no/such/folder");
    EXPECT_EQ(with({}).caFile, "/no/such/file");
    EXPECT_EQ(with({}).caPath, "/no/such/folder");
}

TEST_F(ClientConfiguration, TakesTheSystemsCertificatesOtherwise) {
    for (const char* const variable : {"ZR_ROOT_CERT_FILE", "ZR_ROOT_CERT_PATH"})
        environment.set(variable, "");
    EXPECT_EQ(rootCertificateFile(), foundation::certificates::getSystemCertificatesFile());
    EXPECT_EQ(rootCertificatePath(), foundation::certificates::getSystemCertificatesFolder());
    EXPECT_EQ(with({}).caFile, rootCertificateFile());
    EXPECT_EQ(with({}).caPath, rootCertificatePath());
}

}  // namespace
