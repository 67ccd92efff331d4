#include <aws/core/Aws.h>

#include <ostream>
#include <storage/cloudprovider/CloudException.hpp>
#include <utility>

#include "S3ProviderFactoryV2.hpp"
#include "conformance/AmazonTest.hpp"
#include "support/plugin/HostileTexts.hpp"
#include "support/servers/HeldPort.hpp"
#include "support/servers/MetadataService.hpp"

using namespace testsupport;
using storage::cloudprovider::PermissionDeniedException;
using storage::s3provider::S3ProviderFactoryV2;
using Manner = MetadataService::Manner;
using ::testing::HasSubstr;

namespace {

/// The plug-in in a process that has just started: some of the environment is read only then.
class Started {
public:
    Started() { Aws::InitAPI(options_); }
    ~Started() {
        factory_.reset();
        Aws::ShutdownAPI(options_);
    }
    Started(const Started&) = delete;
    Started& operator=(const Started&) = delete;

    std::shared_ptr<IProvider> open(const std::u16string& bucket) {
        return factory_->createProvider(StorageIRI(u"s3://" + bucket));
    }

private:
    Aws::SDKOptions options_;
    std::unique_ptr<S3ProviderFactoryV2> factory_ = std::make_unique<S3ProviderFactoryV2>(nullptr);
};

/// A machine that may have a metadata service, but neither keys nor a region of its own.
class Machine : public AmazonTest {
protected:
    Machine() {
        environment.unset("AWS_ACCESS_KEY_ID");
        environment.unset("AWS_SECRET_ACCESS_KEY");
        tryOnce();
        amazon.createBucket("second", "eu-west-3");
    }

    void askAt(const std::string& url) {
        environment.unset("AWS_EC2_METADATA_DISABLED");
        environment.set("AWS_EC2_METADATA_SERVICE_ENDPOINT", url);
    }

    void setKeys() {
        environment.set("AWS_ACCESS_KEY_ID", s3server::defaultCredentials.accessKey);
        environment.set("AWS_SECRET_ACCESS_KEY", s3server::defaultCredentials.secretKey);
    }

    void expectUnsigned(IProvider& provider) {
        EXPECT_THROW(put(provider, u"file", "content"), PermissionDeniedException);
        EXPECT_EQ(signatureOf(amazon.requests().back()), "");
    }

    void expectUseless(Manner manner) {
        const MetadataService service(manner);
        environment.set("AWS_REGION", "eu-west-3");
        askAt(service.url());
        Started plugin;
        const auto provider = plugin.open(u"travelled");
        expectUnsigned(*provider);
        const auto once = service.asked();
        EXPECT_GT(once, 0u);
        for (int i = 0; i < 5; ++i)
            expectUnsigned(*provider);
        EXPECT_EQ(service.asked(), once);
    }

    void expectSignedByRole(IProvider& provider) {
        put(provider, u"file", "content");
        EXPECT_THAT(signatureOf(amazon.requests().back()), HasSubstr("Credential=machine/"));
        EXPECT_EQ(amazon.requests().back().header("x-amz-security-token"), "token-of-machine");
    }
};

TEST_F(Machine, SignsWithTheCredentialsOfItsRole) {
    const MetadataService service;
    environment.set("AWS_REGION", "eu-west-3");
    askAt(service.url());
    Started plugin;
    expectSignedByRole(*plugin.open(u"travelled"));
}

TEST_F(Machine, WaitsForAServiceThatIsSlow) {
    const MetadataService service(Manner::Slow);
    environment.set("AWS_REGION", "eu-west-3");
    askAt(service.url());
    Started plugin;
    expectSignedByRole(*plugin.open(u"travelled"));
}

TEST_F(Machine, SignsNothingWhereThereIsNoService) {
    const ClosedPort refusing;
    environment.set("AWS_REGION", "eu-west-3");
    askAt("http://127.0.0.1:" + std::to_string(refusing.number()));
    Started plugin;
    expectUnsigned(*plugin.open(u"travelled"));
}

TEST_F(Machine, IsntAskedWhereTheEnvironmentHasKeysAndARegion) {
    setKeys();
    for (const char* const region : {"AWS_REGION", "AWS_DEFAULT_REGION"}) {
        const MetadataService service;
        const Environment chosen{{region, "eu-west-3"}};
        askAt(service.url());
        Started plugin;
        for (const char16_t* const bucket : {u"travelled", u"second"}) {
            const auto provider = plugin.open(bucket);
            put(*provider, u"folder/file", "content");
            EXPECT_EQ(get(*provider, u"folder/file"), "content");
            EXPECT_EQ(provider->list(u"folder").size(), 1u);
        }
        EXPECT_EQ(service.asked(), 0u) << region;
    }
}

TEST_F(Machine, IsServedWhateverIsSaidOfAServiceThatItDoesntNeed) {
    setKeys();
    environment.set("AWS_REGION", "eu-west-3");
    for (const char* const variable :
         {"AWS_EC2_METADATA_SERVICE_ENDPOINT", "AWS_EC2_METADATA_SERVICE_ENDPOINT_MODE"})
        for (const auto& text : hostileTexts()) {
            SCOPED_TRACE(variable + (": " + shown(text)));
            const Environment hostile{{variable, text}};
            put(*Started().open(u"travelled"), u"file", "content");
        }
}

TEST_F(Machine, SignsNothingAndLeavesASilentServiceAlone) {
    expectUseless(Manner::Silent);
}

TEST_F(Machine, SignsNothingAndLeavesAServiceAloneThatSaysSomethingElse) {
    expectUseless(Manner::Wrong);
}

TEST_F(Machine, SignsNothingAndLeavesAServiceAloneThatHasNoRole) {
    expectUseless(Manner::Without);
}

/// Requests to the metadata service while a bucket is opened, a second one of the same region is opened, a
/// file is written to the first, and once more.
struct Asked {
    std::size_t opening;
    std::size_t openingAnother;
    std::size_t writing;
    std::size_t writingAgain;
};

bool operator==(const Asked& a, const Asked& b) {
    return a.opening == b.opening && a.openingAnother == b.openingAnother && a.writing == b.writing &&
           a.writingAgain == b.writingAgain;
}

std::ostream& operator<<(std::ostream& out, const Asked& asked) {
    return out << asked.opening << ", " << asked.openingAnother << ", " << asked.writing << ", "
               << asked.writingAgain;
}

/// Where keys and region are, and what that costs: docs/configuration.md.
struct Sources {
    const char* name;
    bool keysInEnvironment;
    const char* credentialsFile;
    const char* configFile;
    std::vector<std::pair<const char*, const char*>> variables;
    Asked ofServiceThatAnswers;
    Asked ofServiceWithout;
};

void PrintTo(const Sources& sources, std::ostream* out) {
    *out << sources.name;
}

constexpr const char* keysOfServer =
    "[default]\naws_access_key_id = s3server-access-key\naws_secret_access_key = s3server-secret-key\n";
constexpr const char* regionOfBucket = "[default]\nregion = eu-west-3\n";

const std::vector<std::pair<const char*, const char*>> chosenRegion{{"AWS_REGION", "eu-west-3"}};
const std::vector<std::pair<const char*, const char*>> endpoint{
    {"ZR_AWS_ENDPOINT_OVERRIDE", "https://s3.eu-west-3.amazonaws.com"}};

const Sources everySource[] = {
    {"KeysAndRegion", true, "", "", chosenRegion, {0, 0, 0, 0}, {0, 0, 0, 0}},
    {"KeysAndRegionOfConfigFile", true, "", regionOfBucket, {}, {0, 0, 0, 0}, {0, 0, 0, 0}},
    {"KeysAndRegionOfCredentialsFile", true, regionOfBucket, "", {}, {4, 0, 0, 0}, {3, 0, 0, 0}},
    {"KeysAlone", true, "", "", {}, {4, 0, 0, 0}, {4, 0, 0, 0}},
    {"KeysAndEndpoint", true, "", "", endpoint, {4, 0, 0, 0}, {3, 1, 0, 0}},
    {"KeysOfFileAndRegion", false, keysOfServer, "", chosenRegion, {0, 0, 0, 0}, {0, 0, 0, 0}},
    {"KeysOfFileAlone", false, keysOfServer, "", {}, {4, 0, 0, 0}, {4, 0, 0, 0}},
    {"RegionAlone", false, "", "", chosenRegion, {7, 0, 0, 0}, {2, 0, 0, 0}},
    {"Nothing", false, "", "", {}, {10, 0, 0, 0}, {6, 0, 0, 0}},
};

class MetadataRequests : public Machine, public ::testing::WithParamInterface<Sources> {
protected:
    void prepare() {
        if (GetParam().keysInEnvironment) setKeys();
        for (const auto& [name, value] : GetParam().variables)
            environment.set(name, value);
        write(".aws/credentials", GetParam().credentialsFile);
        write(".aws/config", GetParam().configFile);
    }

    Asked count(Manner manner) {
        const MetadataService service(manner);
        askAt(service.url());
        Started plugin;
        std::size_t before = 0;
        const auto more = [&] { return service.asked() - std::exchange(before, service.asked()); };
        const auto provider = plugin.open(u"travelled");
        const auto opening = more();
        plugin.open(u"second");
        const auto openingAnother = more();
        tryToPut(*provider);
        const auto writing = more();
        tryToPut(*provider);
        return {opening, openingAnother, writing, more()};
    }

private:
    // Not every one of these requests gets in.
    static void tryToPut(IProvider& provider) {
        try {
            put(provider, u"file", "content");
        } catch (const storage::cloudprovider::CloudException&) {
        }
    }
};

TEST_P(MetadataRequests, AreAsManyAsDocumented) {
    prepare();
    EXPECT_EQ(count(Manner::Right), GetParam().ofServiceThatAnswers);
    EXPECT_EQ(count(Manner::Without), GetParam().ofServiceWithout);
}

INSTANTIATE_TEST_SUITE_P(Sources, MetadataRequests, ::testing::ValuesIn(everySource),
                         [](const auto& sources) { return sources.param.name; });

}  // namespace
