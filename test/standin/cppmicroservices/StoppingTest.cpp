#include <cppmicroservices/IllegalStateException.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "Phrases.hpp"
#include "support/process/StartedFramework.hpp"

namespace {

using namespace cppmicroservices;

/// Does something when a component asks for its text.
class Trigger final : public test::Phrase {
public:
    explicit Trigger(std::function<void()> action) : action_(std::move(action)) {}

    std::string text() const override {
        action_();
        return "hello";
    }
    void note(const std::string&) override {}

private:
    std::function<void()> action_;
};

class Stopping : public testing::Test {
protected:
    /// Registers a phrase whose first user, the greeter's constructor, does that.
    auto registerTrigger(BundleContext context, std::function<void()> action) {
        return context.RegisterService<test::Phrase>(std::make_shared<Trigger>(std::move(action)),
                                                     {{"language", std::string("en")}});
    }

    testsupport::StartedFramework framework_;
    Bundle greeter_ = framework_.start(GREETER_BUNDLE);
    Bundle other_ = framework_.start(MISFIT_BUNDLE);
};

TEST_F(Stopping, LeavesNoServiceOfABundleThatIsStoppedWhileItRegistersIt) {
    EXPECT_THROW(registerTrigger(other_.GetBundleContext(), [this] { other_.Stop(); }),
                 IllegalStateException);
    EXPECT_TRUE(framework_.context().GetServiceReferences<test::Phrase>().empty());
    EXPECT_EQ(test::greeting(framework_.context()), "nobody");
}

TEST_F(Stopping, LeavesNoServiceOfAFrameworkThatIsStoppedWhileItRegistersIt) {
    EXPECT_THROW(registerTrigger(framework_.context(), [this] { framework_.framework().Stop(); }),
                 IllegalStateException);
    framework_.framework().Start();
    EXPECT_TRUE(framework_.context().GetServiceReferences<test::Phrase>().empty());
}

/// Registers a phrase when it is destroyed.
class Successor {
public:
    explicit Successor(BundleContext context) : context_(std::move(context)) {}
    Successor(const Successor&) = delete;
    Successor& operator=(const Successor&) = delete;
    ~Successor() { test::registerPhrase(context_, "too late"); }

private:
    BundleContext context_;
};

TEST_F(Stopping, WithdrawsWhatIsRegisteredWhileABundlesServicesAreWithdrawn) {
    BundleContext context = other_.GetBundleContext();
    context.RegisterService<Successor>(std::make_shared<Successor>(context));
    other_.Stop();
    EXPECT_TRUE(framework_.context().GetServiceReferences<test::Phrase>().empty());
}

TEST_F(Stopping, WithdrawsWhatIsRegisteredWhileAFrameworksServicesAreWithdrawn) {
    BundleContext context = framework_.context();
    context.RegisterService<Successor>(std::make_shared<Successor>(context));
    framework_.framework().Stop();
    framework_.framework().Start();
    EXPECT_TRUE(framework_.context().GetServiceReferences<test::Phrase>().empty());
}

}  // namespace
