#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <ctime>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "Phrases.hpp"
#include "support/process/Environment.hpp"
#include "support/process/StartedFramework.hpp"

namespace {

using namespace cppmicroservices;

constexpr int rounds = 100;

void inThreads(int count, const std::function<void()>& work) {
    std::vector<std::thread> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back(work);
    for (std::thread& thread : threads)
        thread.join();
}

// A service may go between being found and being asked for.
std::string greetingOrGone(const BundleContext& context) {
    try {
        return test::greeting(context);
    } catch (const std::invalid_argument&) {
        return "nobody";
    }
}

/// Every object of the component that was made is gone, in order.
void expectAllEnded(const test::Journal& journal) {
    const auto events = journal.events();
    const auto count = [&events](const char* event) {
        return std::count(events.begin(), events.end(), event);
    };
    EXPECT_GT(count("made"), 0);
    EXPECT_EQ(count("made"), count("activated"));
    EXPECT_EQ(count("made"), count("deactivated"));
    EXPECT_EQ(count("made"), count("destroyed"));
}

TEST(ServiceThreads, RegisterAndWithdrawWhileOthersLookUp) {
    testsupport::StartedFramework framework;
    BundleContext context = framework.context();
    std::atomic<int> found = 0;
    inThreads(4, [&] {
        for (int round = 0; round < rounds; ++round) {
            auto registration = test::registerPhrase(context, "hello");
            found += static_cast<int>(!context.GetServiceReferences<test::Phrase>("(language=en)").empty());
            registration.Unregister();
        }
    });
    EXPECT_EQ(found, 4 * rounds);
    EXPECT_TRUE(context.GetServiceReferences<test::Phrase>().empty());
}

TEST(ServiceThreads, ComponentsFollowServicesOfManyThreads) {
    testsupport::StartedFramework framework;
    BundleContext context = framework.context();
    framework.start(GREETER_BUNDLE);
    const auto journal = std::make_shared<test::Journal>();
    inThreads(4, [&] {
        for (int round = 0; round < rounds; ++round) {
            auto phrase = test::registerPhrase(context, "hello", journal);
            const std::string greeting = greetingOrGone(context);
            EXPECT_TRUE(greeting == "hello!" || greeting == "nobody" || greeting == "broken") << greeting;
            phrase.Unregister();
        }
    });
    EXPECT_EQ(greetingOrGone(context), "nobody");
    expectAllEnded(*journal);
}

TEST(ServiceThreads, BundlesAreInstalledOnceByManyThreads) {
    // Reading an archive asks for the time zone, which the C library reads anew each time unless one is set;
    // the thread sanitizer doesn't see the lock that guards it.
    const testsupport::Environment zone{{"TZ", "UTC"}};
    tzset();
    for (int round = 0; round < rounds / 4; ++round) {
        testsupport::StartedFramework framework;
        const auto before = framework.context().GetBundles().size();
        inThreads(4, [&framework] { framework.install(GREETER_BUNDLE); });
        EXPECT_EQ(framework.context().GetBundles().size(), before + 1);
    }
}

TEST(ServiceThreads, BundlesStartAndStopOnManyThreads) {
    testsupport::StartedFramework framework;
    BundleContext context = framework.context();
    Bundle bundle = framework.install(GREETER_BUNDLE);
    const auto journal = std::make_shared<test::Journal>();
    const auto phrase = test::registerPhrase(context, "hello", journal);
    inThreads(3, [&] {
        for (int round = 0; round < rounds / 4; ++round) {
            Bundle mine = bundle;
            mine.Start();
            greetingOrGone(context);
            mine.Stop();
        }
    });
    expectAllEnded(*journal);
    bundle.Start();
    EXPECT_EQ(test::greeting(context), "hello!");
}

}  // namespace
