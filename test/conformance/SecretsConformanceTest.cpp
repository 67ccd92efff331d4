#include <fl/i18n.hpp>
#include <foundation/storage/provider/Exception.hpp>
#include <storage/cloudprovider/CloudException.hpp>

#include "AwsS3ClientFactory.hpp"
#include "DiagnosticRecord.hpp"
#include "S3ProviderFactoryV2.hpp"
#include "conformance/AmazonTest.hpp"

using namespace testsupport;
using storage::s3provider::S3ProviderFactoryV2;
using ::testing::AllOf;
using ::testing::AnyOf;
using ::testing::Contains;
using ::testing::ContainsRegex;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

namespace {

/// Text that begins every secret but the one that the server accepts.
constexpr const char* planted = "pl4nted-s3cret";
constexpr const char* plantedInBase64 = "cGw0bnRlZC1zM2NyZX";

const std::string& rightSecret() {
    return s3server::defaultCredentials.secretKey;
}

/// The default path with a secret at every place that takes one, and ears for all that is said about it.
class PlantedSecrets : public AmazonTest {
protected:
    PlantedSecrets() {
        tryOnce();
        environment.set("ZR_PROXY_USERNAME", "me");
        environment.set("ZR_PROXY_PASSWORD", secret("of the proxy"));
        for (const char* const variable : {"http_proxy", "https_proxy", "HTTP_PROXY", "HTTPS_PROXY"})
            environment.set(variable, "http://me:" + secret("of-the-system") + "@127.0.0.1:1/");
        environment.set("S3VFS_SETTINGS", write("settings.json", settings()).string());
        write(".aws/credentials",
              "[default]\naws_access_key_id = somebody\naws_secret_access_key = " + secret("of the file") +
                  "\naws_session_token = " + secret("token of the file") + "\n");
    }

    ~PlantedSecrets() override { expectSecretsUntold(); }

    void expectSecretsUntold() const {
        const auto isSecret = AnyOf(HasSubstr(planted), HasSubstr(plantedInBase64), HasSubstr(rightSecret()));
        for (const auto& text : said)
            EXPECT_THAT(text, Not(isSecret));
        for (const auto& text : records.texts())
            EXPECT_THAT(text, Not(isSecret));
        EXPECT_THAT(printed, Not(isSecret));
    }

    static std::string secret(const std::string& whose) { return std::string(planted) + ' ' + whose; }

    static std::string settings() {
        return R"({"orrery": {"web": {"UseProxy": true, "ProxyHost": "127.0.0.1", "ProxyPort": "1",
                   "UseProxyAuthentication": true, "ProxyUsername": "me", "ProxyPassword": ")" +
               secret("of the settings") + "\"}}}";
    }

    /// Does all that a provider can do, six things, and keeps what failures say.
    void useBucket() {
        hear([&] { put(*open(), u"folder/file", "content"); });
        hear([&] { get(*open(), u"folder/file"); });
        hear([&] { get(*open(), u"folder/none"); });
        hear([&] { open()->list(u"/folder"); });
        hear([&] { open()->stat(u"/folder/file"); });
        hear([&] { open()->remove(u"/folder/file"); });
    }

    std::shared_ptr<IProvider> open() {
        S3ProviderFactoryV2 fresh(nullptr);
        return fresh.createProvider(StorageIRI(u"s3://travelled"));
    }

    template <typename Action>
    void hear(const Action& action) {
        ::testing::internal::CaptureStdout();
        ::testing::internal::CaptureStderr();
        hearFailure(action);
        printed += ::testing::internal::GetCapturedStdout();
        printed += ::testing::internal::GetCapturedStderr();
    }

    template <typename Action>
    void hearFailure(const Action& action) {
        try {
            action();
        } catch (const storage::cloudprovider::CloudException& failure) {
            said.emplace_back(failure.what());
            cloudFailures.emplace_back(failure.what());
            if (failure.context()) said.push_back(textOf(*failure.context()));
        } catch (const foundation::storage::provider::Exception& failure) {
            said.emplace_back(failure.what());
            for (const auto& context : failure.contexts())
                said.push_back(textOf(context));
        } catch (const std::exception& failure) {
            said.emplace_back(failure.what());
        }
    }

    static std::string textOf(const foundation::storage::provider::ExceptionContext& context) {
        return fl::i18n::ustring_to_utf8(context.text());
    }

    /// Uses the bucket, and expects that each of the six things fails with that text of an exception, and is
    /// put down to a cause that this pattern describes.
    void expectUsesToFail(const std::string& exceptionText, const std::string& cause) {
        // A refused question for the region would send the requests to the SDK's default region instead.
        environment.set("AWS_REGION", "eu-west-3");
        expectSecretsUntold();
        cloudFailures.clear();
        records.clear();
        useBucket();
        EXPECT_THAT(cloudFailures, AllOf(SizeIs(6), Each(exceptionText)));
        EXPECT_THAT(failedRequests(), AllOf(SizeIs(6), Each(ContainsRegex(cause))));
    }

    /// Expects besides that S3 tells the reason to the three that aren't HEAD requests, whose answers can't.
    void expectUsesToBeRefused(const std::string& exceptionText, int status, const std::string& reason) {
        expectUsesToFail(exceptionText, "HTTP response code: " + std::to_string(status));
        EXPECT_THAT(failedRequests(), Contains(HasSubstr("Exception name: " + reason)).Times(3));
    }

    std::vector<std::string> failedRequests() const {
        return records.texts(storage::s3provider::LogFailedRequests);
    }

    /// Expects that every request was signed with that access key and came with that session token.
    void expectRequestsToShow(const std::string& accessKey, const std::string& token) const {
        EXPECT_THAT(amazon.requests(), Not(IsEmpty()));
        for (const auto& request : amazon.requests()) {
            EXPECT_THAT(signatureOf(request), HasSubstr("Credential=" + accessKey + "/"));
            EXPECT_EQ(request.header("x-amz-security-token"), token);
        }
    }

    std::vector<std::string> said;           ///< by exceptions
    std::vector<std::string> cloudFailures;  ///< the texts of those that are CloudExceptions
    std::string printed;
    LogCapture records{clientChannel, factoryChannel};
};

constexpr const char* proxyFailure = "Caught exception while parsing proxy information.";
constexpr const char* denied = "Permission for the Cloud resource has been denied";

TEST_F(PlantedSecrets, ArentToldWhenAllIsWell) {
    useBucket();
    EXPECT_THAT(said, ElementsAre("Cloud Resource not found", "no_such_key"));
    EXPECT_THAT(records.texts(), Not(IsEmpty()));
}

TEST_F(PlantedSecrets, ArentToldWhenTheKeyIsRefused) {
    environment.set("AWS_SECRET_ACCESS_KEY", secret("of the environment"));
    expectUsesToBeRefused(denied, 403, "SignatureDoesNotMatch");
}

TEST_F(PlantedSecrets, ArentToldWhenTheTokenIsRefused) {
    environment.set("AWS_SESSION_TOKEN", secret("token of the environment"));
    expectUsesToBeRefused("Unknown error", 400, "InvalidToken");
    expectRequestsToShow(s3server::defaultCredentials.accessKey, secret("token of the environment"));
}

TEST_F(PlantedSecrets, ArentToldWhenTheRegionIsRefused) {
    environment.set("AWS_SECRET_ACCESS_KEY", secret("of the environment"));
    S3ProviderFactoryV2 factory(nullptr);
    hear([&] { factory.createProvider(StorageIRI(u"s3://travelled")); });
    EXPECT_EQ(factory.getCachedBucketRegion("travelled"), "");
    ASSERT_THAT(amazon.requests(), SizeIs(1));
    EXPECT_EQ(amazon.requests()[0].operation, "GetBucketLocation");
    EXPECT_EQ(amazon.requests()[0].status, 403);
}

TEST_F(PlantedSecrets, ArentToldWhenTheFileHoldsTheKeys) {
    environment.unset("AWS_ACCESS_KEY_ID");
    environment.unset("AWS_SECRET_ACCESS_KEY");
    expectUsesToBeRefused(denied, 403, "InvalidAccessKeyId");
    expectRequestsToShow("somebody", secret("token of the file"));
}

TEST_F(PlantedSecrets, ArentToldWhenThePairIsMismatched) {
    environment.unset("AWS_ACCESS_KEY_ID");
    environment.set("AWS_SECRET_ACCESS_KEY", secret("without a key"));
    expectUsesToBeRefused(denied, 403, "InvalidAccessKeyId");
    expectRequestsToShow("somebody", secret("token of the file"));
}

TEST_F(PlantedSecrets, ArentToldWhenTheyAreIllFormed) {
    for (const char* const end : {"\r\nx-injected: yes", "\xff", "\x01"}) {
        const Environment illFormed{{"AWS_SECRET_ACCESS_KEY", secret("that ends badly") + end}};
        expectUsesToBeRefused(denied, 403, "SignatureDoesNotMatch");
    }
    for (const char* const end : {"\r\nx-injected: yes", "\xff", "\x01"}) {
        const Environment illFormed{{"AWS_SESSION_TOKEN", secret("that ends badly") + end}};
        expectUsesToFail("Unknown error",
                         "HTTP response code: 400|x-amz-security-token .* control character");
    }
}

TEST_F(PlantedSecrets, ArentToldWhenTheProxysAreIllFormed) {
    environment.set("ZR_PROXY_PASSWORD", secret("of the proxy") + "\xff");
    hear([] { storage::s3provider::makeClientConfiguration(); });
    EXPECT_THAT(said, IsEmpty());
    EXPECT_THAT(records.texts(), ElementsAre(AllOf(StartsWith(proxyFailure), HasSubstr("ill-formed UTF-8"))));
}

TEST_F(PlantedSecrets, ArentToldWhenTheSettingsAreIllFormed) {
    environment.unset("ZR_PROXY_HOST");
    const auto file = write("settings.json", settings() + ",");
    hear([] { storage::s3provider::makeClientConfiguration(); });
    EXPECT_THAT(said, IsEmpty());
    EXPECT_THAT(records.texts(), ElementsAre(AllOf(StartsWith(proxyFailure), HasSubstr(file.string()),
                                                   HasSubstr("bad JSON"))));
}

TEST_F(PlantedSecrets, ArentToldWhenTheyStandInAnAddress) {
    environment.set("ZR_AWS_ENDPOINT_OVERRIDE", "https://me:" + std::string(planted) + "@evil.example/");
    // The SDK itself makes another host of the user's name, asks for that, and is refused by the certificate.
    expectUsesToFail("Unknown error", "Invalid DNS Label|not a valid URI|curlCode: 60, ");
    EXPECT_THAT(proxy.tunnels(), Each(AllOf(Not(HasSubstr("evil.example")), Not(HasSubstr(planted)))));
}

TEST_F(PlantedSecrets, ArentToldWhenTheProxyIsNone) {
    environment.set("ZR_PROXY_PORT", "1");
    expectUsesToFail("Unknown error", "curlCode: 7, ");
    EXPECT_THAT(amazon.requests(), IsEmpty());
}

}  // namespace
