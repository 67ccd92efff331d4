#include <cppmicroservices/ServiceInterface.h>
#include <gmock/gmock.h>

#include <array>
#include <cppmicroservices/servicecomponent/detail/ComponentInstanceImpl.hpp>
#include <foundation/storage/provider/Exception.hpp>
#include <new>
#include <stdexcept>
#include <storage/cloudprovider/CloudException.hpp>
#include <string>
#include <thread>
#include <vector>

#include "BoundContext.hpp"
#include "FailingAllocations.hpp"
#include "LoadedBundle.hpp"
#include "ServedBucket.hpp"

using namespace testsupport;
using foundation::storage::provider::PhysicalProviderFactory;
using foundation::storage::provider::StorageIRI;
using foundation::thirdpartylibmgmt::Initializer;
using storage::cloudprovider::CloudException;
using storage::cloudprovider::PermissionDeniedException;

namespace {

class EntryPoints : public ::testing::Test {
protected:
    LoadedBundle bundle;
};

TEST_F(EntryPoints, GiveAndTakeBackAnInstance) {
    ComponentInstance* const instance = bundle.newInstance();
    ASSERT_NE(instance, nullptr);
    bundle.deleteInstance(instance);
}

TEST_F(EntryPoints, GiveANewInstanceEachTime) {
    const ActiveComponent one(bundle, nullptr);
    const ActiveComponent another(bundle, nullptr);
    EXPECT_NE(one.factory(), another.factory());
}

TEST_F(EntryPoints, IgnoreANullInstance) {
    bundle.deleteInstance(nullptr);
}

// What isn't safe here is found by the thread sanitizer, or ends the process.
TEST_F(EntryPoints, TakeContextsFromManyThreads) {
    std::array<char, 4> places;
    std::vector<std::thread> threads;
    for (char& place : places)
        threads.emplace_back([this, &place] {
            for (int round = 0; round < 10000; ++round)
                bundle.setBundleContext(reinterpret_cast<cppmicroservices::BundleContextPrivate*>(&place));
        });
    for (auto& thread : threads)
        thread.join();
    bundle.setBundleContext(nullptr);
}

TEST_F(EntryPoints, AskForTheInitializerByItsReferenceAndItsInterface) {
    std::vector<std::string> asked;
    ComponentInstance* const instance = bundle.newInstance();
    instance->CreateInstance(
        std::make_shared<BoundContext>([&](const std::string& reference, const std::string& interface) {
            asked = {reference, interface};
            return nullptr;
        }));
    bundle.deleteInstance(instance);
    EXPECT_THAT(asked,
                ::testing::ElementsAre("awsInitializer", "foundation::thirdpartylibmgmt::Initializer"));
}

TEST_F(EntryPoints, OfferTheFactoryUnderItsInterfaceAlone) {
    ActiveComponent component(bundle, nullptr);
    const auto interfaces = component.instance().GetInterfaceMap();
    ASSERT_EQ(interfaces->size(), 1u);
    EXPECT_EQ(interfaces->begin()->first, "foundation::storage::provider::PhysicalProviderFactory");
    EXPECT_EQ(component.factory()->getRootIRI(StorageIRI(u"s3://bucket/a/b")), StorageIRI(u"s3://bucket/"));
}

TEST_F(EntryPoints, LetTheFactoryHoldTheInitializerAfterTheInstanceIsGone) {
    auto initializer = std::make_shared<Initializer>();
    const std::weak_ptr<Initializer> held = initializer;
    auto factory = ActiveComponent(bundle, initializer).factory();
    initializer.reset();
    EXPECT_FALSE(held.expired());
    factory.reset();
    EXPECT_TRUE(held.expired());
}

TEST_F(EntryPoints, LetAFailureToFindTheInitializerPass) {
    ComponentInstance* const instance = bundle.newInstance();
    const auto context = std::make_shared<BoundContext>(
        [](const auto&, const auto&) -> std::shared_ptr<void> { throw std::domain_error("not bound"); });
    EXPECT_THROW(instance->CreateInstance(context), std::domain_error);
    bundle.deleteInstance(instance);
}

TEST_F(EntryPoints, LetAFailureToMakeTheFactoryPass) {
    ComponentInstance* const instance = bundle.newInstance();
    auto initializer = std::make_shared<Initializer>();
    const auto context = std::make_shared<BoundContext>([&](const auto&, const auto&) {
        failNextAllocation();
        return initializer;
    });
    EXPECT_THROW(instance->CreateInstance(context), std::bad_alloc);
    bundle.deleteInstance(instance);
    EXPECT_EQ(initializer.use_count(), 1);
}

TEST_F(EntryPoints, LetAHostCatchWhatTheFactoryThrows) {
    const ActiveComponent component(bundle, nullptr);
    try {
        component.factory()->createProvider(StorageIRI(u"s3:///path"));
        FAIL() << "nothing was thrown";
    } catch (const foundation::storage::provider::Exception& error) {
        EXPECT_EQ(error.contexts().front().text(), u"no_bucket");
    }
}

TEST_F(EntryPoints, LetAHostCatchACloudFailureByItsType) {
    ServedBucket bucket;
    bucket.server.plan(s3server::Fault::status(403, "AccessDenied"));
    const ActiveComponent component(bundle, nullptr);
    const auto provider = component.factory()->createProvider(bucket.iri);
    EXPECT_THROW(provider->openRead(u"file"), PermissionDeniedException);
    bucket.server.plan(s3server::Fault::status(403, "AccessDenied"));
    EXPECT_THROW(provider->openRead(u"file"), CloudException);
}

}  // namespace
