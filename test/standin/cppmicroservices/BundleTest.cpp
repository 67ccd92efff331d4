#include <cppmicroservices/AnyMap.h>
#include <cppmicroservices/Bundle.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "Phrases.hpp"
#include "support/process/StartedFramework.hpp"
#include "support/process/TemporaryFolder.hpp"

namespace {

using namespace cppmicroservices;
using testing::Contains;
using testing::Not;

TEST(Bundle, GoesThroughItsStates) {
    testsupport::StartedFramework framework;
    Bundle bundle = framework.install(GREETER_BUNDLE);
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_INSTALLED);
    bundle.Start();
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_ACTIVE);
    bundle.Start();
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_ACTIVE);
    bundle.Stop();
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_RESOLVED);
    bundle.Stop();
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_RESOLVED);
    bundle.Start();
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_ACTIVE);
    bundle.Uninstall();
    EXPECT_EQ(bundle.GetState(), Bundle::STATE_UNINSTALLED);
}

TEST(Bundle, CannotBeStartedOnceItIsUninstalled) {
    testsupport::StartedFramework framework;
    Bundle bundle = framework.install(GREETER_BUNDLE);
    bundle.Uninstall();
    EXPECT_THROW(bundle.Start(), std::logic_error);
    EXPECT_THROW(bundle.Uninstall(), std::logic_error);
    EXPECT_EQ(bundle.GetSymbolicName(), "greeter");
}

TEST(Bundle, IsInstalledOnce) {
    testsupport::StartedFramework framework;
    const Bundle bundle = framework.install(GREETER_BUNDLE);
    EXPECT_EQ(framework.install(GREETER_BUNDLE), bundle);
    EXPECT_THAT(framework.context().GetBundles(), Contains(bundle));
}

TEST(Bundle, CanBeInstalledAgain) {
    testsupport::StartedFramework framework;
    Bundle first = framework.start(GREETER_BUNDLE);
    first.Uninstall();
    EXPECT_THAT(framework.context().GetBundles(), Not(Contains(first)));
    EXPECT_NE(framework.start(GREETER_BUNDLE), first);
    test::registerPhrase(framework.context(), "hello");
    EXPECT_EQ(test::greeting(framework.context()), "hello!");
}

TEST(Bundle, TellsWhatStandsInItsManifest) {
    testsupport::StartedFramework framework;
    const Bundle bundle = framework.install(GREETER_BUNDLE);
    EXPECT_EQ(bundle.GetSymbolicName(), "greeter");
    EXPECT_EQ(bundle.GetLocation(), GREETER_BUNDLE);
    EXPECT_GT(bundle.GetBundleId(), 0);
    const AnyMap& headers = bundle.GetHeaders();
    EXPECT_EQ(any_cast<std::string>(headers.at("bundle.vendor")), "somebody");
    EXPECT_EQ(any_cast<std::string>(headers.at("Bundle.Vendor")), "somebody");
    EXPECT_FALSE(any_cast<bool>(headers.at("bundle.activator")));
    EXPECT_EQ(headers.count("nothing"), 0u);
    const auto kind = any_cast<AnyMap>(headers.at("kind"));
    EXPECT_EQ(any_cast<int>(kind.at("count")), 2);
    const auto words = any_cast<std::vector<Any>>(kind.at("words"));
    ASSERT_EQ(words.size(), 2u);
    EXPECT_EQ(any_cast<std::string>(words[1]), "polite");
}

TEST(Bundle, IsNotTwoWithOneName) {
    testsupport::StartedFramework framework;
    framework.install(GREETER_BUNDLE);
    const testsupport::TemporaryFolder folder;
    const auto copy = folder.path() / "copy.so";
    std::filesystem::copy_file(GREETER_BUNDLE, copy);
    EXPECT_THROW(framework.install(copy), std::runtime_error);
}

TEST(Bundle, HasNoContextUnlessItIsActive) {
    testsupport::StartedFramework framework;
    Bundle bundle = framework.start(GREETER_BUNDLE);
    BundleContext context = bundle.GetBundleContext();
    EXPECT_TRUE(context);
    EXPECT_NO_THROW(context.GetBundles());
    bundle.Stop();
    EXPECT_FALSE(bundle.GetBundleContext());
    EXPECT_ANY_THROW(context.GetBundles());
}

TEST(Bundle, TakesItsServicesWithIt) {
    testsupport::StartedFramework framework;
    Bundle bundle = framework.start(GREETER_BUNDLE);
    const auto reference = test::registerPhrase(bundle.GetBundleContext(), "hello").GetReference();
    EXPECT_TRUE(reference);
    bundle.Stop();
    EXPECT_FALSE(reference);
}

}  // namespace
