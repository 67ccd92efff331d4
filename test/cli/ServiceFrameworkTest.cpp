#include "framework/ServiceFramework.hpp"

#include <cppmicroservices/BundleContext.h>
#include <cppmicroservices/Constants.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using foundation::storage::provider::IProvider;
using foundation::storage::provider::PhysicalProviderFactory;
using foundation::storage::provider::StorageIRI;

namespace {

class FactoryOfAnotherScheme : public PhysicalProviderFactory {
public:
    std::shared_ptr<IProvider> createProvider(const StorageIRI&) override { return nullptr; }
    StorageIRI getRootIRI(const StorageIRI& iri) override { return iri; }
};

TEST(ServiceFramework, GivesTheFactoryOfItsSchemeThoughOthersRankHigher) {
    s3vfs::ServiceFramework framework(BUNDLE_FILE);
    const auto other = std::make_shared<FactoryOfAnotherScheme>();
    auto context = framework.bundle().GetBundleContext();
    context.RegisterService<PhysicalProviderFactory>(
        other, {{"scheme", std::string("file")}, {cppmicroservices::Constants::SERVICE_RANKING, 1000}});
    ASSERT_EQ(context.GetService(context.GetServiceReference<PhysicalProviderFactory>()), other);
    const auto factory = framework.providerFactory();
    ASSERT_TRUE(factory);
    EXPECT_NE(factory, other);
}

}  // namespace
