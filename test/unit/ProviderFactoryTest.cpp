#include <foundation/storage/provider/Exception.hpp>

#include "S3ProviderFactoryV2.hpp"
#include "unit/FactoryTest.hpp"

using namespace testsupport;
using namespace foundation::storage::provider;
using storage::s3provider::S3ProviderFactoryV2;
using ::testing::ElementsAre;

namespace {

/// A factory whose clients are for an endpoint where nobody listens.
class ProviderFactory : public FactoryTest {
protected:
    ProviderFactory() { environment.set("ZR_AWS_ENDPOINT_OVERRIDE", "http://127.0.0.1:1"); }

    S3ProviderFactoryV2 factory{nullptr};
};

TEST_F(ProviderFactory, RefusesAnIriWithoutBucket) {
    environment.set("AWS_REGION", "eu-west-3");
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
}

TEST_F(ProviderFactory, TakesTheHostForTheBucketAsItStands) {
    environment.set("AWS_REGION", "eu-west-3");
    factory.createProvider(StorageIRI(u"s3://My_Bucket/file"));
    EXPECT_EQ(factory.getCachedBucketRegion("My_Bucket"), "eu-west-3");
    EXPECT_EQ(factory.getCachedBucketRegion("my_bucket"), "");
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
    EXPECT_ANY_THROW(factory.createProvider(StorageIRI(u"s3://bucket/")));
}

TEST_F(ProviderFactory, KnowsTheRootOfAnyIri) {
    EXPECT_EQ(factory.getRootIRI(StorageIRI(u"s3://bucket/folder/file")), StorageIRI(u"s3://bucket/"));
    EXPECT_EQ(factory.getRootIRI(StorageIRI(u"s3://bucket")), StorageIRI(u"s3://bucket/"));
    EXPECT_EQ(factory.getCachedBucketRegion("bucket"), "");
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
