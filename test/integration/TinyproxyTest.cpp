#include "S3ProviderFactoryV2.hpp"
#include "conformance/AmazonTest.hpp"
#include "integration/Tinyproxy.hpp"

using namespace testsupport;
using storage::s3provider::S3ProviderFactoryV2;
using ::testing::AllOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

namespace {

constexpr const char* user = "proxy-user";
constexpr const char* password = "proxy-password";

/// Skips the test where Tinyproxy isn't installed.
class ThroughTinyproxy : public AmazonTest {
protected:
    void SetUp() override {
        if (!Tinyproxy::isInstalled())
            GTEST_SKIP() << "tinyproxy isn't installed; tools/install-deps integration installs it";
        tryOnce();
        plain.createBucket("plain", "eu-west-3");
    }

    /// Tunnels to Amazon's names end at the server in its place.
    Tinyproxy::Options forAnybody() const { return {proxy.port(), "", ""}; }
    Tinyproxy::Options forUser() const { return {proxy.port(), user, password}; }

    void use(const Tinyproxy& tinyproxy) {
        environment.set("ZR_PROXY_HOST", "127.0.0.1");
        environment.set("ZR_PROXY_PORT", std::to_string(tinyproxy.port()));
    }

    void authenticate(const std::string& name, const std::string& secret) {
        environment.set("ZR_PROXY_USERNAME", name);
        environment.set("ZR_PROXY_PASSWORD", secret);
    }

    void useNobodysProxy() {
        environment.unset("ZR_PROXY_HOST");
        environment.unset("ZR_PROXY_PORT");
    }

    /// To a server without TLS, so that the proxy sees requests and no tunnels.
    void goToPlainServer() {
        environment.set("ZR_AWS_ENDPOINT_OVERRIDE", "http://" + plain.endpoint());
        environment.set("AWS_REGION", "eu-west-3");
    }

    void useBucket(const std::string& bucket) {
        const auto provider =
            factory.createProvider(StorageIRI(u"s3://" + std::u16string(bucket.begin(), bucket.end())));
        put(*provider, u"folder/file", "content");
        EXPECT_EQ(get(*provider, u"folder/file"), "content");
        EXPECT_EQ(provider->list(u"folder").size(), 1u);
        provider->remove(u"folder/file");
    }

    /// Every request to Amazon came through these tunnels and no other connection.
    void expectTunnelsAlone(const Tinyproxy& tinyproxy) {
        EXPECT_THAT(tinyproxy.requests(), ElementsAre("CONNECT travelled.s3.us-east-2.amazonaws.com:443",
                                                      "CONNECT travelled.s3.eu-west-3.amazonaws.com:443"));
        EXPECT_EQ(proxy.tunnels().size(), 2u);
        EXPECT_EQ(amazon.connections(), 2u);
    }

    /// How many requests of the server without TLS have been through Tinyproxy, which says so in them.
    std::size_t forwarded() const {
        std::size_t count = 0;
        for (const auto& request : plain.requests())
            if (request.header("via").value_or("").find("tinyproxy") != std::string::npos) ++count;
        return count;
    }

    s3server::Server plain;
    S3ProviderFactoryV2 factory{nullptr};
};

TEST_F(ThroughTinyproxy, GoesEveryRequest) {
    const Tinyproxy tinyproxy(forAnybody());
    use(tinyproxy);
    useBucket("travelled");
    expectTunnelsAlone(tinyproxy);
}

TEST_F(ThroughTinyproxy, GoesEveryRequestOfAnAuthenticatedUser) {
    const Tinyproxy tinyproxy(forUser());
    use(tinyproxy);
    authenticate(user, password);
    useBucket("travelled");
    expectTunnelsAlone(tinyproxy);
}

TEST_F(ThroughTinyproxy, GoesEveryRequestWithoutTls) {
    const Tinyproxy tinyproxy({0, user, password});
    use(tinyproxy);
    authenticate(user, password);
    goToPlainServer();
    useBucket("plain");
    EXPECT_GT(forwarded(), 0u);
    EXPECT_EQ(forwarded(), plain.requests().size());
    EXPECT_EQ(tinyproxy.requests().size(), plain.requests().size());
}

TEST_F(ThroughTinyproxy, GoesWhatTheSystemsSettingsSendThere) {
    const Tinyproxy tinyproxy(forAnybody());
    useNobodysProxy();
    environment.set("https_proxy", "http://127.0.0.1:" + std::to_string(tinyproxy.port()));
    useBucket("travelled");
    expectTunnelsAlone(tinyproxy);
}

TEST_F(ThroughTinyproxy, GoesWhatTheHostsSettingsSendThere) {
    const Tinyproxy tinyproxy(forUser());
    useNobodysProxy();
    const auto port = std::to_string(tinyproxy.port());
    const auto settings = R"({"orrery": {"web": {"ProxyPort": ")" + port + R"(", "ProxyHost": "127.0.0.1",
        "UseProxy": true, "UseProxyAuthentication": true,
        "ProxyUsername": "proxy-user", "ProxyPassword": "proxy-password"}}})";
    environment.set("S3VFS_SETTINGS", write("settings.json", settings).string());
    useBucket("travelled");
    expectTunnelsAlone(tinyproxy);
}

TEST_F(ThroughTinyproxy, GoesNothingWhereProxiesAreOff) {
    const Tinyproxy tinyproxy({0, "", ""});
    use(tinyproxy);
    const std::string url = "http://127.0.0.1:" + std::to_string(tinyproxy.port());
    for (const char* const name :
         {"http_proxy", "https_proxy", "all_proxy", "HTTP_PROXY", "HTTPS_PROXY", "ALL_PROXY"})
        environment.set(name, url);
    environment.set("ZR_AWS_PROXY", "OFF");
    goToPlainServer();
    useBucket("plain");
    EXPECT_THAT(tinyproxy.requests(), IsEmpty());
    EXPECT_THAT(plain.requests(), Not(IsEmpty()));
}

/// What is said when the proxy lets nobody through.
class RefusalByTinyproxy : public ThroughTinyproxy {
protected:
    /// What the log and the exception say of a write.
    std::vector<std::string> failureOf(const std::u16string& bucket) {
        const LogCapture records({clientChannel, factoryChannel});
        try {
            put(*factory.createProvider(StorageIRI(u"s3://" + bucket)), u"file", "content");
        } catch (const std::exception& failure) {
            auto texts = records.texts();
            texts.emplace_back(failure.what());
            return texts;
        }
        return {};
    }

    /// Its answer's header, in the record of the failed request.
    static auto namesTinyproxy() { return Contains(HasSubstr("-authenticate : Basic realm=\"Tinyproxy\"")); }

    static auto saysNothingSecret() {
        return Each(
            AllOf(Not(HasSubstr(password)), Not(HasSubstr(wrongPassword)), Not(HasSubstr(wrongAsSent))));
    }

    static constexpr const char* wrongPassword = "wrong-password";
    static constexpr const char* wrongAsSent = "cHJveHktdXNlcjp3cm9uZy1wYXNzd29yZA";  // Base64, with the user
};

TEST_F(RefusalByTinyproxy, SaysWhoRefusedAWrongPasswordAndNotWhichItWas) {
    const Tinyproxy tinyproxy(forUser());
    use(tinyproxy);
    authenticate(user, wrongPassword);
    environment.set("AWS_REGION", "eu-west-3");
    const auto said = failureOf(u"travelled");
    EXPECT_THAT(said, namesTinyproxy());
    EXPECT_THAT(said, saysNothingSecret());
    EXPECT_THAT(tinyproxy.requests(), Not(IsEmpty()));
    EXPECT_THAT(amazon.requests(), IsEmpty());
    EXPECT_THAT(proxy.tunnels(), IsEmpty());
}

TEST_F(RefusalByTinyproxy, SaysTheSameWithoutTls) {
    const Tinyproxy tinyproxy({0, user, password});
    use(tinyproxy);
    authenticate(user, wrongPassword);
    goToPlainServer();
    const auto said = failureOf(u"plain");
    EXPECT_THAT(said, namesTinyproxy());
    EXPECT_THAT(said, saysNothingSecret());
    EXPECT_THAT(tinyproxy.requests(), Not(IsEmpty()));
    EXPECT_THAT(plain.requests(), IsEmpty());
}

TEST_F(RefusalByTinyproxy, SaysWhoWantsAPassword) {
    const Tinyproxy tinyproxy(forUser());
    use(tinyproxy);
    environment.set("AWS_REGION", "eu-west-3");
    EXPECT_THAT(failureOf(u"travelled"), namesTinyproxy());
    EXPECT_THAT(amazon.requests(), IsEmpty());
}

}  // namespace
