#include <gtest/gtest.h>

#include <chrono>
#include <memory>

#include "Phrases.hpp"
#include "support/process/StartedFramework.hpp"

namespace {

using namespace cppmicroservices;
using test::greeting;
using test::registerPhrase;

TEST(Framework, HasNoContextBeforeItIsInitialisedAndAfterItStopped) {
    Framework framework = FrameworkFactory().NewFramework();
    EXPECT_FALSE(framework.GetBundleContext());
    framework.Init();
    EXPECT_TRUE(framework.GetBundleContext());
    framework.Start();
    EXPECT_EQ(framework.GetState(), Bundle::STATE_ACTIVE);
    BundleContext context = framework.GetBundleContext();
    EXPECT_NO_THROW(context.GetBundles());
    framework.Stop();
    EXPECT_EQ(framework.WaitForStop(std::chrono::milliseconds(0)).GetType(),
              FrameworkEvent::FRAMEWORK_STOPPED);
    EXPECT_FALSE(framework.GetBundleContext());
    EXPECT_ANY_THROW(context.GetBundles());
    EXPECT_ANY_THROW(registerPhrase(context, "hello"));
}

TEST(Framework, IsWaitedForInVainWhileItRuns) {
    testsupport::StartedFramework started;
    EXPECT_EQ(started.framework().WaitForStop(std::chrono::milliseconds(1)).GetType(),
              FrameworkEvent::FRAMEWORK_WAIT_TIMEDOUT);
}

TEST(Framework, WithdrawsEveryServiceWhenItStops) {
    testsupport::StartedFramework started;
    const auto reference = registerPhrase(started.context(), "hello").GetReference();
    ASSERT_TRUE(reference);
    started.stop();
    EXPECT_FALSE(reference);
}

TEST(Framework, KnowsNothingOfAnother) {
    testsupport::StartedFramework first;
    testsupport::StartedFramework second;
    first.start(GREETER_BUNDLE);
    second.start(GREETER_BUNDLE);
    registerPhrase(first.context(), "hello");
    EXPECT_EQ(greeting(first.context()), "hello!");
    EXPECT_EQ(greeting(second.context()), "nobody");
    registerPhrase(second.context(), "welcome");
    first.stop();
    EXPECT_EQ(greeting(second.context()), "welcome!");
}

}  // namespace
