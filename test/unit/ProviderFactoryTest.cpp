#include <sys/stat.h>

#include <chrono>
#include <fl/i18n.hpp>
#include <foundation/storage/provider/Exception.hpp>
#include <future>
#include <storage/cloudprovider/buildCloudProvider.hpp>

#include "S3ProviderFactoryV2.hpp"
#include "support/plugin/FactoryTest.hpp"

using namespace testsupport;
using namespace foundation::storage::provider;
using storage::s3provider::S3ProviderFactoryV2;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// Hosts know the policy that every provider is made with by its number.
static_assert(static_cast<int>(storage::cloudprovider::FolderPolicy::Implicit) == 0);

/// A factory whose clients are for an endpoint where nobody listens.
class ProviderFactory : public FactoryTest {
protected:
    ProviderFactory() { environment.set("ZR_AWS_ENDPOINT_OVERRIDE", "http://127.0.0.1:1"); }

    S3ProviderFactoryV2 factory{nullptr};
};

TEST_F(ProviderFactory, RefusesAnIriWithoutBucket) {
    environment.set("AWS_REGION", "eu-west-3");
    environment.set("ZR_AWS_GETDATA_ATTEMPTS", "many");  // would leave a record
    for (const char16_t* const text : {u"s3:///file", u"s3:file", u"s3:"}) {
        const StorageIRI iri{text};
        try {
            factory.createProvider(iri);
            FAIL() << "no exception";
        } catch (const Exception& error) {
            EXPECT_EQ(error.errorCode(), ErrorCode::InvalidIRI);
            EXPECT_EQ(static_cast<int>(error.errorCode()), 1);
            EXPECT_EQ(error.iri(), iri);
            EXPECT_THAT(error.contexts(), ElementsAre(ExceptionContext(u"no_bucket")));
        }
    }
    EXPECT_EQ(factory.getCachedBucketRegion(""), "");
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST_F(ProviderFactory, TakesTheHostForTheBucketAsItStands) {
    environment.set("AWS_REGION", "eu-west-3");
    factory.createProvider(StorageIRI(u"s3://My_Bucket/file"));
    EXPECT_EQ(factory.getCachedBucketRegion("My_Bucket"), "eu-west-3");
    EXPECT_EQ(factory.getCachedBucketRegion("my_bucket"), "");
    factory.createProvider(StorageIRI(u"s3://z\u00FCge/"));
    EXPECT_EQ(factory.getCachedBucketRegion("z\xC3\xBCge"), "eu-west-3");
}

TEST_F(ProviderFactory, MakesANewProviderEachTime) {
    const StorageIRI iri(u"s3://bucket/");
    EXPECT_NE(factory.createProvider(iri), factory.createProvider(iri));
}

TEST_F(ProviderFactory, ReadsTheRetrySettingsForEachProvider) {
    environment.set("ZR_AWS_GETDATA_ATTEMPTS", "many");
    environment.set("ZR_AWS_RETRYTIMEMS", "long");
    factory.createProvider(StorageIRI(u"s3://bucket/"));
    EXPECT_THAT(log.texts(), ElementsAre("Caught exception while parsing ZR_AWS_GETDATA_ATTEMPTS",
                                         "Caught exception while parsing ZR_AWS_RETRYTIMEMS"));
    environment.set("ZR_AWS_GETDATA_ATTEMPTS", "7");
    environment.set("ZR_AWS_RETRYTIMEMS", "0");
    factory.createProvider(StorageIRI(u"s3://bucket/"));
    EXPECT_EQ(log.records().size(), 2u);
}

TEST_F(ProviderFactory, LetsTheFailuresOfMakingAClientPass) {
    environment.set("AWS_SHARED_CREDENTIALS_FILE", "\xFF");
    EXPECT_THROW(factory.createProvider(StorageIRI(u"s3://bucket/")), fl::i18n::conversion_error);
}

TEST_F(ProviderFactory, RemembersARegionAlsoWhenNoClientCanBeMade) {
    environment.set("AWS_REGION", "eu-west-3");
    environment.set("AWS_SHARED_CREDENTIALS_FILE", "\xFF");
    EXPECT_THROW(factory.createProvider(StorageIRI(u"s3://bucket/")), fl::i18n::conversion_error);
    EXPECT_EQ(factory.getCachedBucketRegion("bucket"), "eu-west-3");
}

TEST_F(ProviderFactory, KnowsTheRootOfAnyIri) {
    environment.set("AWS_REGION", "eu-west-3");
    for (const char16_t* const text :
         {u"s3://bucket", u"s3://bucket/folder/file?query", u"s3:///file", u"s3:"})
        EXPECT_EQ(factory.getRootIRI(StorageIRI(text)), StorageIRI(StorageIRI(text), u"/"));
    EXPECT_EQ(factory.getRootIRI(StorageIRI(u"s3://bucket/folder/file")), StorageIRI(u"s3://bucket/"));
    EXPECT_EQ(factory.getCachedBucketRegion("bucket"), "");
}

TEST_F(ProviderFactory, MakesOneClientAtATimeAndLetsNobodyAtItsCachesMeanwhile) {
    const auto known = factory.getClientForRegion("eu-west-1");
    const auto settings = home.path() / "settings.json";
    ASSERT_EQ(::mkfifo(settings.c_str(), 0600), 0);
    environment.set("S3VFS_SETTINGS", settings.string());
    environment.unset("ZR_AWS_PROXY");
    auto fresh = std::async(std::launch::async, [&] { return factory.getClientForRegion("eu-west-2"); });
    std::ofstream writer(settings);  // opens when the preferences are being read
    auto again = std::async(std::launch::async, [&] { return factory.getClientForRegion("eu-west-1"); });
    auto stored = std::async(std::launch::async, [&] { factory.storeBucketRegion("bucket", "eu-west-1"); });
    auto cached = std::async(std::launch::async, [&] { return factory.getCachedBucketRegion("other"); });
    const auto soon = std::chrono::steady_clock::now() + std::chrono::milliseconds(50);
    EXPECT_EQ(again.wait_until(soon), std::future_status::timeout);
    EXPECT_EQ(stored.wait_until(soon), std::future_status::timeout);
    EXPECT_EQ(cached.wait_until(soon), std::future_status::timeout);
    writer << "{}";
    writer.close();
    EXPECT_EQ(again.get(), known);
    stored.get();
    EXPECT_EQ(factory.getCachedBucketRegion("bucket"), "eu-west-1");
    EXPECT_EQ(cached.get(), "");
    EXPECT_NE(fresh.get(), known);
}

TEST_F(ProviderFactory, HoldsTheInitializerForItsWholeLife) {
    struct SdkInitializer : foundation::thirdpartylibmgmt::Initializer {};
    auto initializer = std::make_shared<SdkInitializer>();
    const std::weak_ptr<SdkInitializer> watched = initializer;
    {
        const S3ProviderFactoryV2 holder{std::move(initializer)};
        EXPECT_FALSE(watched.expired());
    }
    EXPECT_TRUE(watched.expired());
}

}  // namespace
