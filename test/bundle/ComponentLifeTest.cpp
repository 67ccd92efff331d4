#include <cppmicroservices/Any.h>
#include <cppmicroservices/AnyMap.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "FailingAllocations.hpp"
#include "RunningFramework.hpp"
#include "ServedBucket.hpp"
#include "conformance/AmazonTest.hpp"

using namespace testsupport;
using cppmicroservices::any_cast;
using ::testing::Eq;
using ::testing::IsEmpty;
using ::testing::Pointee;
using ::testing::SizeIs;

namespace {

class ComponentLife : public ::testing::Test {
protected:
    RunningFramework host;
};

TEST_F(ComponentLife, ShowsTheHostTheManifest) {
    const auto plugIn = host.plugIn();
    EXPECT_EQ(plugIn.GetSymbolicName(), "com_quorvex_s3provider");
    const auto& manifest = plugIn.GetHeaders();
    EXPECT_THAT(any_cast<std::string>(&manifest.at("identifier")), Pointee(Eq("orrery.remotedata.s3")));
    EXPECT_THAT(any_cast<std::string>(&manifest.at("scheme")), Pointee(Eq("s3")));
}

TEST_F(ComponentLife, OffersNoFactoryWithoutAnInitializer) {
    EXPECT_THAT(host.offers(), IsEmpty());
}

TEST(WaitingComponent, LeavesNoRecord) {
    const LogCapture log({factoryChannel, clientChannel});
    RunningFramework host;
    host.registerInitializer("aws-sdk-java");
    EXPECT_THAT(host.offers(), IsEmpty());
    EXPECT_THAT(log.records(), IsEmpty());
}

TEST_F(ComponentLife, OffersNoFactoryWithTheInitializerOfAnotherLibrary) {
    for (const char* const library : {"aws-sdk-java", "aws-sdk-cpp-2", "AWS-SDK-CPP", ""})
        host.registerInitializer(library);
    EXPECT_THAT(host.offers(), IsEmpty());
    host.registerInitializer("aws-sdk-cpp");
    EXPECT_THAT(host.offers(), SizeIs(1));
}

TEST_F(ComponentLife, OffersAFactoryForTheSchemeOnceTheInitializerIsThere) {
    host.registerInitializer();
    EXPECT_THAT(host.offers("(scheme=s3)"), SizeIs(1));
    EXPECT_THAT(host.offers("(scheme=file)"), IsEmpty());
    ASSERT_THAT(host.offers(), SizeIs(1));
    const auto scheme = host.offers().front().GetProperty("scheme");
    EXPECT_THAT(any_cast<std::string>(&scheme), Pointee(Eq("s3")));
}

// There is no other way to let the factory's constructor fail.
TEST_F(ComponentLife, OffersNoFactoryWhileMemoryForItIsMissing) {
    // A framework may load the library as late as here, and what fails while it is loaded ends the process.
    auto loading = host.registerInitializer();
    ASSERT_TRUE(host.factory());
    loading.Unregister();

    int failures = 0;
    for (bool failed = true; failed; failures += static_cast<int>(failed)) {
        auto initializer = std::make_shared<Initializer>();
        const std::weak_ptr<Initializer> held = initializer;
        failAllocation(failures + 1, BUNDLE_FILE);
        auto registration = host.registerInitializer("aws-sdk-cpp", std::move(initializer));
        auto factory = host.factory();
        failed = !stopFailing();
        EXPECT_EQ(factory == nullptr, failed) << failures;
        registration.Unregister();
        registration = {};
        factory.reset();
        EXPECT_TRUE(held.expired()) << failures;
    }
    EXPECT_GE(failures, 2) << "the instance and the factory are made by the bundle";
}

TEST_F(ComponentLife, OpensABucket) {
    const ServedBucket bucket;
    host.registerInitializer();
    const auto factory = host.factory();
    ASSERT_TRUE(factory);
    EXPECT_EQ(get(*factory->createProvider(bucket.iri), u"file"), bucket.content);
}

TEST_F(ComponentLife, GivesEverybodyTheSameFactory) {
    host.registerInitializer();
    EXPECT_EQ(host.factory(), host.factory());
}

TEST_F(ComponentLife, EndsWithTheInitializersRegistrationButNotForOpenedProviders) {
    const ServedBucket bucket;
    auto initializer = std::make_shared<Initializer>();
    const std::weak_ptr<Initializer> held = initializer;
    auto registration = host.registerInitializer("aws-sdk-cpp", std::move(initializer));
    auto factory = host.factory();
    ASSERT_TRUE(factory);
    const auto provider = factory->createProvider(bucket.iri);

    registration.Unregister();
    registration = {};
    EXPECT_THAT(host.offers(), IsEmpty());
    EXPECT_FALSE(held.expired()) << "the factory is still held";
    EXPECT_EQ(get(*provider, u"file"), bucket.content);
    factory.reset();
    EXPECT_TRUE(held.expired());
    EXPECT_EQ(get(*provider, u"file"), bucket.content);
}

TEST_F(ComponentLife, BeginsAnewWithANewFactoryWhenTheInitializerReturns) {
    auto registration = host.registerInitializer();
    const auto first = host.factory();
    registration.Unregister();
    host.registerInitializer();
    const auto second = host.factory();
    ASSERT_TRUE(first);
    ASSERT_TRUE(second);
    EXPECT_NE(second, first);
}

TEST_F(ComponentLife, GoesOnWithAnotherInitializerWhenThereAreTwo) {
    auto registration = host.registerInitializer();
    host.registerInitializer();
    ASSERT_TRUE(host.factory());
    registration.Unregister();
    EXPECT_TRUE(host.factory());
}

TEST_F(ComponentLife, EndsAndBeginsAnewWithTheBundle) {
    host.registerInitializer();
    EXPECT_TRUE(host.factory());
    host.plugIn().Stop();
    EXPECT_THAT(host.offers(), IsEmpty());
    host.plugIn().Start();
    EXPECT_TRUE(host.factory());
    host.plugIn().Uninstall();
    EXPECT_THAT(host.offers(), IsEmpty());
}

TEST_F(ComponentLife, IsEachFrameworksOwn) {
    RunningFramework other;
    host.registerInitializer();
    EXPECT_THAT(other.offers(), IsEmpty());
    other.registerInitializer();
    const auto factory = host.factory();
    const auto otherFactory = other.factory();
    ASSERT_TRUE(factory);
    ASSERT_TRUE(otherFactory);
    EXPECT_NE(factory, otherFactory);
    other.plugIn().Stop();
    EXPECT_THAT(other.offers(), IsEmpty());
    EXPECT_EQ(host.factory(), factory);
}

TEST_F(ComponentLife, ServesManyThreadsWhileInitializersComeAndGo) {
    const ServedBucket bucket;
    std::atomic<int> opened = 0;
    const auto comeAndGo = [&] {
        for (int round = 0; round < 50; ++round) {
            auto registration = host.registerInitializer();
            if (const auto factory = host.factory()) {
                factory->createProvider(bucket.iri);
                ++opened;
            }
            registration.Unregister();
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(comeAndGo);
    for (auto& thread : threads)
        thread.join();
    EXPECT_GT(opened, 0);
    EXPECT_THAT(host.offers(), IsEmpty());
    host.registerInitializer();
    EXPECT_TRUE(host.factory());
}

TEST(ProvidersOfAFramework, OutliveIt) {
    const ServedBucket bucket;
    std::shared_ptr<foundation::storage::provider::IProvider> provider;
    {
        RunningFramework host;
        host.registerInitializer();
        const auto factory = host.factory();
        ASSERT_TRUE(factory);
        provider = factory->createProvider(bucket.iri);
    }
    EXPECT_EQ(get(*provider, u"file"), bucket.content);
}

class ReturningComponent : public AmazonTest {
protected:
    auto locationsAsked() const {
        const auto requests = amazon.requests();
        return std::count_if(requests.begin(), requests.end(),
                             [](const auto& request) { return request.operation == "GetBucketLocation"; });
    }

    RunningFramework host;
};

TEST_F(ReturningComponent, RemembersNoClient) {
    environment.set("AWS_REGION", "eu-west-3");
    amazon.putObject("travelled", "file", "content");
    const auto open = [&] {
        const auto factory = host.factory();
        return factory ? get(*factory->createProvider(StorageIRI(u"s3://travelled")), u"file") : "no factory";
    };
    auto registration = host.registerInitializer();
    EXPECT_EQ(open(), "content");
    // A client keeps the proxy that it was made with.
    Relay another(amazon.port(), Relay::Opening::Connect);
    environment.set("ZR_PROXY_PORT", std::to_string(another.port()));
    EXPECT_EQ(open(), "content");
    EXPECT_EQ(another.connections(), 0u);
    registration.Unregister();
    host.registerInitializer();
    EXPECT_EQ(open(), "content");
    EXPECT_GT(another.connections(), 0u);
}

TEST_F(ReturningComponent, RemembersNoRegion) {
    const StorageIRI iri(u"s3://travelled");
    auto registration = host.registerInitializer();
    ASSERT_TRUE(host.factory());
    host.factory()->createProvider(iri);
    host.factory()->createProvider(iri);
    EXPECT_EQ(locationsAsked(), 1);
    registration.Unregister();
    host.registerInitializer();
    ASSERT_TRUE(host.factory());
    host.factory()->createProvider(iri);
    EXPECT_EQ(locationsAsked(), 2);
}

}  // namespace
